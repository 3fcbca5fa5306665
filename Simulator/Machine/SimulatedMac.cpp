#include "Simulator/Machine/SimulatedMac.h"

#include <utility>

#include "Simulator/Desktop/SimulatedCommandDoor.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedIcons.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/HostMainThread.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Ports/Desktop.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

namespace {

constexpr auto placingAnew = std::chrono::milliseconds(200);   ///< of the broom, when displays change
constexpr auto quittingTime = std::chrono::milliseconds(200);  ///< an app's last words

}  // namespace

struct SimulatedMac::Parts {
    Parts(SimulatedMac& mac, SimulatedMacOptions options)
        : mainThread(options.date),
          host(options.host),
          thread(host != nullptr ? static_cast<MachineThread&>(*host) : mainThread),
          accessibility(thread, options.trusted),
          displays(thread, std::move(options.displays)),
          framework(thread, [this] { icons.refresh(); }),
          icons(mac, thread, accessibility) {}

    SimulatedZone zone;
    SimulatedMainThread mainThread;
    HostMainThread* host;
    MachineThread& thread;
    SimulatedAccessibility accessibility;
    SimulatedProcesses processes{thread};
    SimulatedWorkspace workspace{thread, processes};
    SimulatedDisplays displays;
    SimulatedPointer pointer{thread, accessibility};
    SimulatedWindows windows{accessibility};
    SimulatedFramework framework;
    SimulatedActivity activity{mainThread};
    SimulatedCommandDoor commands;
    SimulatedDialogs dialogs{thread};
    SimulatedHotKeys hotKeys{thread};
    SimulatedLoginItem loginItem;
    SimulatedApplication application;
    SimulatedDefaults defaults;
    SimulatedPasteboard pasteboard;
    SimulatedStatusItem statusItem{thread};
    SimulatedSurfaces surfaces{thread};
    SimulatedUpdater updater;

    SimulatedIcons icons;
    SimulatedSession session{SimulatedSession::Parts{mainThread, thread, accessibility, workspace}};
    SimulatedDisk disk;
};

SimulatedMac::SimulatedMac(SimulatedMacOptions options)
    : parts_(std::make_unique<Parts>(*this, std::move(options))),
      zone(parts_->zone),
      mainThread(parts_->mainThread),
      accessibility(parts_->accessibility),
      processes(parts_->processes),
      workspace(parts_->workspace),
      displays(parts_->displays),
      pointer(parts_->pointer),
      windows(parts_->windows),
      framework(parts_->framework),
      activity(parts_->activity),
      commands(parts_->commands),
      dialogs(parts_->dialogs),
      hotKeys(parts_->hotKeys),
      loginItem(parts_->loginItem),
      application(parts_->application),
      defaults(parts_->defaults),
      pasteboard(parts_->pasteboard),
      statusItem(parts_->statusItem),
      surfaces(parts_->surfaces),
      updater(parts_->updater),
      session(parts_->session) {
    launch(SimulatedApp::menuBarAgent());
    launch(SimulatedApp::systemUIServer());
    processes.setOwn(launch(SimulatedApp::velkoItself()));
    accessibility.setOwn(processes.ownPID());
    workspace.onTerminate = [this](ProcessID pid) {
        parts_->thread.happen(quittingTime, [this, pid] { quit(pid); });
    };
    mainThread.isNapping = [this] {
        return activity.isNapping(surfaces.isAnyOpen() || statusItem.isMenuOpen());
    };
    windows.others = {{.layer = 24, .ownerPID = menuBarHost(), .frame = Rect{.width = 1920, .height = 24}},
                      {.layer = 0, .ownerPID = std::nullopt}};
}

SimulatedMac::~SimulatedMac() {
    if (parts_->host != nullptr) {
        parts_->host->waitForReads();
    }
}

void SimulatedMac::advance(MainThread::Uptime duration) {
    if (parts_->host != nullptr) {
        parts_->host->runFor(duration);
    } else {
        mainThread.advance(duration);
    }
}

FileCalls SimulatedMac::fileCalls() const {
    return parts_->disk.calls();
}

Platform SimulatedMac::platform() noexcept {
    return {.mainThread = parts_->thread,
            .accessibility = accessibility,
            .workspace = workspace,
            .displays = displays,
            .pointer = pointer,
            .processes = processes,
            .windows = windows,
            .privateFramework = framework,
            .activity = activity};
}

AppPorts SimulatedMac::appPorts() noexcept {
    return {.application = application,
            .commands = commands,
            .defaults = defaults,
            .dialogs = dialogs,
            .hotKeys = hotKeys,
            .loginItem = loginItem,
            .pasteboard = pasteboard,
            .statusItem = statusItem,
            .surfaces = surfaces,
            .updater = updater};
}

SimulatedMac::Cost SimulatedMac::cost() const {
    return {.wakeUps = mainThread.wakeUps(),
            .bursts = mainThread.bursts(),
            .accessibilityMessages = accessibility.messages(),
            .engineCalls = framework.activations() + framework.invalidations(),
            .bytesWritten = parts_->disk.bytesWritten()};
}

SimulatedMac::Registered SimulatedMac::registered() const {
    return {.elementObservers = accessibility.observers(),
            .noticeObservers = workspace.observers() + displays.observers(),
            .taps = pointer.taps(),
            .keys = hotKeys.registered().size(),
            .work = mainThread.waiting()};
}

ProcessID SimulatedMac::launch(SimulatedApp app) {
    const ProcessID pid = processes.start(std::move(app));
    const SimulatedProcess& process = *processes.find(pid);
    workspace.install(process.app);
    accessibility.addApplication(pid, process.app.name);
    for (const auto& icon : process.app.icons) {
        parts_->icons.put(pid, icon);
    }
    parts_->icons.refresh();
    workspace.announce(
        process.app,
        {.kind = WorkspaceNotice::Kind::launched, .pid = pid, .bundleID = workspace.bundleID(pid)});
    return pid;
}

void SimulatedMac::quit(ProcessID pid) {
    if (processes.find(pid) != nullptr) {
        const auto bundleID = workspace.bundleID(pid);
        end(pid, {.kind = WorkspaceNotice::Kind::terminated,
                  .pid = bundleID ? std::optional(pid) : std::nullopt,
                  .bundleID = bundleID});
    }
}

void SimulatedMac::crash(ProcessID pid) {
    end(pid, {.kind = WorkspaceNotice::Kind::terminated});
}

void SimulatedMac::hang(ProcessID pid, bool hung) {
    accessibility.setHung(pid, hung);
}

void SimulatedMac::end(ProcessID pid, const WorkspaceNotice& notice) {
    const auto* process = processes.find(pid);
    if (process == nullptr) {
        return;
    }
    const SimulatedApp app = process->app;
    processes.end(pid);
    accessibility.removeApplication(pid);
    parts_->icons.removeAll(pid);
    if (windows.menuOwner() == pid) {
        windows.closeMenu();
    }
    parts_->icons.refresh();
    workspace.announce(app, notice);
}

void SimulatedMac::changeIcon(ProcessID pid, std::size_t index,
                              const std::function<void(SimulatedIcon&)>& change) {
    parts_->icons.change(pid, index, change);
}

void SimulatedMac::addIcon(ProcessID pid, SimulatedIcon icon, std::optional<std::size_t> place) {
    parts_->icons.add(pid, std::move(icon), place);
}

void SimulatedMac::removeIcon(ProcessID pid, std::size_t index) {
    parts_->icons.remove(pid, index);
}

SimulatedElement* SimulatedMac::iconElement(ProcessID pid, std::size_t index) {
    return parts_->icons.element(pid, index);
}

void SimulatedMac::setHitsEndAtHost(bool host) {
    parts_->icons.setHitsEndAtHost(host);
}

void SimulatedMac::click(Point location) {
    parts_->icons.click(location);
}

bool SimulatedMac::clickIcon(ProcessID pid, std::size_t index) {
    return parts_->icons.clickOn(pid, index);
}

std::string SimulatedMac::menuBarPicture() const {
    return parts_->icons.picture();
}

ProcessID SimulatedMac::menuBarHost() const {
    return processes.oldestNamed(SimulatedApp::menuBarHostName).value_or(0);
}

void SimulatedMac::grantTrust(bool isTold) {
    accessibility.setTrusted(true, isTold);
}

void SimulatedMac::revokeTrust(bool isTold) {
    accessibility.setTrusted(false, isTold);
    pointer.killTaps();
}

void SimulatedMac::setDisplays(std::vector<Display> arrangement) {
    session.keepAppsBusy();
    displays.set(std::move(arrangement));
    parts_->icons.broom().settle(BroomSpot::stub, placingAnew);
    parts_->icons.refresh();
}

void SimulatedMac::openMenu(ProcessID pid) {
    windows.openMenu(pid);
}

void SimulatedMac::closeMenu() {
    windows.closeMenu();
}

void SimulatedMac::activate(ProcessID pid, double menus) {
    windows.bringToFront(pid, menus);
    parts_->icons.refresh();
    workspace.tell(
        {.kind = WorkspaceNotice::Kind::activated, .pid = pid, .bundleID = workspace.bundleID(pid)});
}

bool SimulatedMac::clickBroom(const SimulatedClick& click) {
    return parts_->icons.broom().click(click);
}

void SimulatedMac::putBroom(BroomSpot spot) {
    parts_->icons.broom().put(spot);
}

BroomSpot SimulatedMac::broomSpot() const noexcept {
    return parts_->icons.broom().spot();
}

std::vector<BundleID> SimulatedMac::visibleIcons() const {
    return parts_->icons.visible().apps();
}

std::vector<std::string> SimulatedMac::visibleSystemItems() const {
    return parts_->icons.visible().systemItems();
}

const SimulatedMenuBar& SimulatedMac::menuBar() const noexcept {
    return parts_->icons.menuBar();
}

}  // namespace velko
