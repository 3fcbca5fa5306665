#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Simulator/Contracts/ActingContracts.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Pointer.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Screen.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::Contracts {

namespace {

using namespace std::chrono_literals;

constexpr Uptime timeout = std::chrono::milliseconds(100);

std::optional<AXElement> firstIcon(const Platform& platform, ProcessID pid) {
    const auto& accessibility = platform.accessibility;
    const auto bar = accessibility.attribute(accessibility.application(pid, timeout), "AXExtrasMenuBar");
    const auto* const element = bar ? std::get_if<AXElement>(&*bar) : nullptr;
    const auto children = element != nullptr ? accessibility.attribute(*element, "AXChildren")
                                             : std::unexpected(AXError::failure);
    const auto* const list = children ? std::get_if<std::vector<AXElement>>(&*children) : nullptr;
    return list != nullptr && !list->empty() ? std::optional(list->front()) : std::nullopt;
}

std::optional<Point> middleOf(const Platform& platform, const AXElement& element) {
    const auto position = platform.accessibility.attribute(element, "AXPosition");
    const auto size = platform.accessibility.attribute(element, "AXSize");
    const auto* const corner = position ? std::get_if<Point>(&*position) : nullptr;
    const auto* const extent = size ? std::get_if<Size>(&*size) : nullptr;
    if (corner == nullptr || extent == nullptr) {
        return std::nullopt;
    }
    return Point{.x = corner->x + extent->width / 2, .y = corner->y + extent->height / 2};
}

/// What happens to taps that the system refuses.
void checkRefusedTaps(const Platform& platform, const TestMac& mac, Checks& checks) {
    int heard = 0;
    const auto tapped = [&] { return platform.pointer.tapClicks([&](const ClickTapEvent&) { ++heard; }); };
    mac.refuseTaps(true);
    const bool isRefused = tapped() == nullptr;
    mac.refuseTaps(false);
    expect(checks, "a tap may be refused with the permission", isRefused);
    const auto tap = tapped();
    mac.setTrusted(false);
    mac.click(mac.launch("com.example.clicked"));
    mac.pass(1s);
    expect(checks, "a tap is deaf once the permission is taken", tap && !tap->isEnabled() && heard == 0);
    mac.setTrusted(true);
    if (tap) {
        tap->enable();
    }
    expect(checks, "and stays so when it is back", tap && !tap->isEnabled());
}

}  // namespace

void checkMenus(const Platform& platform, const TestMac& mac, Checks& checks) {
    auto& accessibility = platform.accessibility;
    const ProcessID pid = mac.launch("com.example.app");
    const auto icon = firstIcon(platform, pid);
    std::string heard;
    std::string heardOnce;
    const auto application = accessibility.application(pid, timeout);
    const auto observer =
        accessibility.observe(pid, timeout, [&](const std::string& name, const AXElement& about) {
            heard += name + (accessibility.pid(about) == std::expected<ProcessID, AXError>(pid) ? " " : "? ");
        });
    const bool isAdded = observer && observer->add(application, "AXMenuClosed");
    std::unique_ptr<AXObserver> once;
    once = accessibility.observe(pid, timeout, [&](const std::string&, const AXElement&) {
        once.reset();
        heardOnce += "!";
    });
    const bool isAddedOnce = once && once->add(application, "AXMenuClosed");
    expect(checks, "an app's menus can be observed", isAdded && isAddedOnce);
    expect(checks, "asking again is refused",
           observer &&
               observer->add(application, "AXMenuClosed") ==
                   std::expected<void, AXError>(std::unexpected(AXError::notificationAlreadyRegistered)));
    expect(checks, "pressing an icon succeeds", icon && accessibility.perform(*icon, "AXPress"));
    mac.pass(1s);
    const auto windows = platform.windows.onScreen();
    expect(checks, "it opens the app's menu",
           windows && !windows->empty() && windows->front().ownerPID == pid);
    expect(checks, "an action that an element lacks is refused",
           icon && accessibility.perform(*icon, "AXNobodyHasThis") ==
                       std::expected<void, AXError>(std::unexpected(AXError::actionUnsupported)));
    mac.closeMenu();
    expect(checks, "no notification comes inside the act", heard.empty());
    mac.pass(1s);
    expect(checks, "closing it is told, with the process", heard == "AXMenuClosed ", heard);
    mac.openMenu(pid);
    mac.closeMenu();
    mac.pass(1s);
    expect(checks, "an observer may end within its own handler", heardOnce == "!", heardOnce);
}

void checkClicks(const Platform& platform, const TestMac& mac, Checks& checks) {
    const ProcessID pid = mac.launch("com.example.app");
    const auto icon = firstIcon(platform, pid);
    const auto middle = icon ? middleOf(platform, *icon) : std::nullopt;
    std::vector<ClickTapEvent> heard;
    auto tap = platform.pointer.tapClicks([&](const ClickTapEvent& event) { heard.push_back(event); });
    mac.click(pid);
    expect(checks, "no click is heard inside the act", heard.empty());
    mac.pass(1s);
    const bool isAtIcon = heard.size() == 1 && heard.front().location == middle;
    expect(checks, "a tap hears of a click, and where it was", isAtIcon);
    const auto under = platform.accessibility.elementAt(middle.value_or(Point{}), timeout);
    const ProcessID named = under ? platform.accessibility.pid(*under).value_or(0) : 0;
    expect(checks, "the element under a point is the app's, or the menu bar's host's",
           named == pid || named == AX::menuBarHostPID(platform), std::to_string(named));
    heard.clear();
    mac.disableTaps();
    mac.click(pid);
    mac.pass(1s);
    expect(checks, "a tap that is switched off hears of that and of nothing more",
           heard == std::vector{ClickTapEvent{.kind = ClickTapEvent::Kind::disabled, .location = {}}} &&
               tap && !tap->isEnabled());
    if (tap) {
        tap->enable();
    }
    mac.click(pid);
    mac.pass(1s);
    expect(checks, "it can be switched on again", heard.size() == 2 && tap && tap->isEnabled());
    mac.click(pid);
    tap.reset();
    mac.pass(1s);
    expect(checks, "a tap that has ended hears nothing", heard.size() == 2);
    checkRefusedTaps(platform, mac, checks);
    mac.hang(named);
    const auto start = platform.mainThread.now();
    const auto hung = platform.accessibility.elementAt(middle.value_or(Point{}), timeout);
    const Uptime cost = platform.mainThread.now() - start;
    expect(checks, "asking for what lies under a point takes at most the time-out",
           !hung && cost > timeout * 9 / 10 && cost < 2 * timeout, std::to_string(secondsOf(cost)) + " s");
    mac.setTrusted(false);
    expect(checks, "without the permission there is no tap and no answer",
           !platform.pointer.tapClicks([](const ClickTapEvent&) {}) &&
               !platform.accessibility.elementAt(middle.value_or(Point{}), timeout));
}

void checkWork(const Platform& platform, const TestMac& mac, Checks& checks) {
    const ProcessID pid = mac.launch("com.example.app");
    std::string heard;
    const auto listening = platform.workspace.observe([&](const WorkspaceNotice& notice) {
        if (notice.kind == WorkspaceNotice::Kind::activated) {
            heard += notice.bundleID.value_or("-") + (notice.pid == pid ? " " : "? ");
        }
    });
    const auto before = platform.processes.resourceUsage(pid);
    mac.work(pid);
    mac.activate(pid);
    mac.pass(1s);
    const auto after = platform.processes.resourceUsage(pid);
    const TimeBase base = platform.processes.timeBase();
    const double seconds = before && after ? static_cast<double>(after->userTime - before->userTime +
                                                                 after->systemTime - before->systemTime) *
                                                 base.numerator / base.denominator / 1e9
                                           : 0;
    expect(checks, "a process that keeps a core busy for a second has used one of it",
           seconds > 0.9 && seconds < 1.1, std::to_string(seconds) + " s");
    expect(checks, "an app that comes to the front is told", heard == "com.example.app ", heard);
    expect(checks, "a process that runs can be signalled",
           platform.processes.nullSignal(pid) == NullSignal::delivered &&
               platform.workspace.bundleID(pid) == "com.example.app");
    mac.quit(pid);
    mac.pass(1s);
    expect(checks, "one that has ended cannot, and has used nothing",
           platform.processes.nullSignal(pid) == NullSignal::noSuchProcess &&
               !platform.processes.resourceUsage(pid) && !platform.workspace.bundleID(pid));
}

}  // namespace velko::Contracts
