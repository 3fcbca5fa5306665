#include "Playground/Web/Session.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"

namespace velko::web {

namespace {

constexpr Rect settingsPlace{.x = 500, .y = 260, .width = 715, .height = 560};

using std::chrono::nanoseconds;
using std::chrono::steady_clock;

constexpr auto slice = std::chrono::seconds(10);  ///< virtual time between two looks at the real clock
constexpr auto longestLag =
    std::chrono::seconds(1);  ///< a slow machine catches up with at most so much real time

SimulatedMacOptions optionsFor(const std::filesystem::path& home) {
    std::error_code error;
    return {.trusted = std::filesystem::exists(home / "layout.json", error),
            .date = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now())};
}

view::Menu menuOfApp(SimulatedMac& mac, ProcessID pid) {
    const auto* process = mac.processes.find(pid);
    const std::string name = process == nullptr ? "" : process->app.name;
    return {view::MenuItem::header(name),
            {.title = "Open " + name, .action = [&mac, pid] { mac.activate(pid); }},
            view::MenuItem::separator(),
            {.title = "Quit " + name, .action = [&mac, pid] { mac.quit(pid); }}};
}

}  // namespace

void SystemSettings::look(SimulatedMac& mac) {
    const auto& addresses = mac.workspace.openedURLs();
    for (; addressesSeen_ < addresses.size(); ++addressesSeen_) {
        if (addresses[addressesSeen_].starts_with("x-apple.systempreferences:")) {
            open(mac);
        }
    }
}

void SystemSettings::open(SimulatedMac& mac) {
    if (isOpen()) {
        return;
    }
    pid_ = mac.launch({.bundleID = "com.apple.systempreferences", .name = "System Settings"});
    mac.windows.others.insert(mac.windows.others.begin(),
                              {.layer = 0, .ownerPID = pid_, .frame = settingsPlace});
}

void SystemSettings::close(SimulatedMac& mac) {
    if (const auto pid = std::exchange(pid_, std::nullopt)) {
        std::erase_if(mac.windows.others, [pid](const WindowInfo& window) { return window.ownerPID == pid; });
        mac.quit(*pid);
    }
}

Session::Session(const std::filesystem::path& home) : world_(home, optionsFor(home)) {
    mac().onMenuBarChange = [this] { noteChange(); };
    mac().application.onTerminate = [this] { isQuitting_ = true; };
    world_.onEnd = [this] { forgetVelko(); };
    // A new icon goes to the left of all others. Velko starts first, so the broom stands beside the system's
    // own items.
    world_.startVelko();
    for (const auto& sample : scenarios::sampleApps()) {
        mac().launch(scenarios::appOf(sample));
    }
    settle();
}

void Session::pass(nanoseconds real, nanoseconds budget) {
    const auto deadline = steady_clock::now() + budget;
    const auto atSpeed = [this](nanoseconds duration) {
        return std::chrono::duration_cast<MainThread::Uptime>(duration * speed_);
    };
    owed_ = std::min(owed_ + atSpeed(real), atSpeed(longestLag));
    if (!script::timeCanPass(mac(), owed_ + jump_)) {
        owed_ = jump_ = MainThread::Uptime(0);
    }
    while (owed_ + jump_ > MainThread::Uptime(0)) {
        const auto step = std::min<MainThread::Uptime>(slice, owed_ + jump_);
        mac().advance(step);
        const auto paid = std::min(owed_, step);
        owed_ -= paid;
        jump_ -= step - paid;
        settle();
        if (steady_clock::now() >= deadline) {
            return;
        }
    }
}

void Session::settle() {
    mac().advance(MainThread::Uptime(0));
    systemSettings_.look(mac());
    if (std::exchange(isQuitting_, false)) {
        world_.quitVelko();
    }
    const bool isLeftOver = std::ranges::any_of(controlMenu_, [this](const OpenMenu& menu) {
        return menu.surface ? !mac().surfaces.surface(*menu.surface).isOpen()
                            : !mac().surfaces.isWindowOpen();  // it is one of Velko's own
    });
    if (isLeftOver) {
        closeControlMenu();
    }
}

Done Session::jump(MainThread::Uptime duration) {
    const Done done = script::timeCanPass(mac(), jump_ + duration);
    if (done) {
        jump_ += duration;
    }
    return done;
}

/// When a program ends, its menus and alerts leave the screen.
void Session::forgetVelko() {
    closeControlMenu();
    alertsRead_ = mac().dialogs.alerts().size();
}

std::uint64_t Session::revision() {
    const auto second = std::chrono::floor<std::chrono::seconds>(mac().mainThread.date());
    return changes_ + mac().cost().wakeUps + mac().surfaces.revision() + mac().statusItem.revision() +
           static_cast<std::uint64_t>(second.time_since_epoch().count());
}

std::vector<Session::OpenMenu> Session::menus() {
    if (!controlMenu_.empty()) {
        return controlMenu_;
    }
    if (const auto* menu = mac().statusItem.menu()) {
        return {{.anchor = "broom", .items = *menu}};
    }
    if (const auto owner = mac().windows.menuOwner()) {
        return {{.anchor = "icon:" + std::to_string(*owner), .items = menuOfApp(mac(), *owner)}};
    }
    return {};
}

Done Session::choose(const std::vector<std::size_t>& place) {
    const auto open = menus();
    if (open.empty()) {
        return place.empty() ? Done() : std::unexpected("No menu is open.");
    }
    const auto* item = view::itemAt(open.front().items, place);
    const bool isChosen = item != nullptr && item->isEnabled && item->action;
    if (!isChosen && !place.empty()) {
        return std::unexpected("There is nothing to choose there.");
    }
    closeMenus();
    if (isChosen) {
        item->action();
    }
    return {};
}

void Session::closeMenus() {
    noteChange();
    if (!controlMenu_.empty()) {
        closeControlMenu();
        return;
    }
    if (mac().statusItem.menu() != nullptr) {
        mac().statusItem.closeMenu();
        return;
    }
    mac().closeMenu();
}

void Session::openControlMenu(OpenMenu menu) {
    closeControlMenu();
    if (menu.surface) {
        mac().surfaces.surface(*menu.surface).inHand = true;
    }
    controlMenu_ = {std::move(menu)};
}

void Session::closeControlMenu() {
    if (!controlMenu_.empty()) {
        mac().surfaces.letGo();
        controlMenu_.clear();
        noteChange();
    }
}

const Dialogs::Alert* Session::alert() {
    const auto& alerts = mac().dialogs.alerts();
    return alertsRead_ < alerts.size() ? &alerts[alertsRead_] : nullptr;
}

Done Session::startOver() {
    world_.quitVelko();
    std::error_code error;
    std::filesystem::remove(world_.layoutFile(), error);
    if (error) {
        return std::unexpected("The layout file can't be removed: " + error.message());
    }
    mac().revokeTrust();
    world_.startVelko();
    return {};
}

}  // namespace velko::web
