#include "Simulator/Contracts/ActingContracts.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "VelkoCore/Time/Date.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/PrivateFramework.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Screen.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::Contracts {

namespace {

using namespace std::chrono_literals;

constexpr Uptime patience = std::chrono::milliseconds(100);
constexpr auto library = "/System/Library/PrivateFrameworks/MenuBarClientCore.framework/MenuBarClientCore";

std::optional<AXElement> elementAt(const Platform& platform, const AXElement& element,
                                   const std::string& name) {
    const auto value = platform.accessibility.attribute(element, name);
    const auto* found = value ? std::get_if<AXElement>(&*value) : nullptr;
    return found != nullptr ? std::optional(*found) : std::nullopt;
}

/// The time that a read on the main thread takes; nothing when it succeeds.
std::optional<Uptime> costOfFailure(const Platform& platform, const AXElement& element) {
    const auto start = platform.mainThread.now();
    if (platform.accessibility.attribute(element, "AXRole")) {
        return std::nullopt;
    }
    return platform.mainThread.now() - start;
}

bool isOneTimeout(std::optional<Uptime> cost) {
    return cost && *cost > patience * 9 / 10 && *cost < 2 * patience;
}

std::string secondsText(std::optional<Uptime> time) {
    return std::to_string(secondsOf(time.value_or(Uptime::zero()))) + " s";
}

/// Asks for an allowlist and waits for the answer. Returns the assertion if the framework agreed.
PrivateFramework::ObjectRef hideAllBut(PrivateFramework& framework, const Pass& pass,
                                       const std::vector<BundleID>& allowed) {
    const auto assertion = framework.makeAssertion("MBAssessmentModeAssertion").value_or(nullptr);
    const auto configuration =
        framework.makeConfiguration("MBAssessmentModeConfiguration", {0, 1, 2, 3}, allowed).value_or(nullptr);
    std::optional<bool> agreed;
    const auto sent = framework.activate(assertion, configuration, [&agreed](const auto& error) {
        agreed = agreed ? false : !error;  // a second answer is one too many
    });
    const bool answeredInside = agreed.has_value();
    pass(1s);
    return sent && !answeredInside && agreed == true ? assertion : nullptr;
}

}  // namespace

void checkApps(const Platform& platform, const TestMac& mac, Checks& checks) {
    const BundleID bundleID = "com.example.app";
    const ProcessID pid = mac.launch(bundleID);
    const auto isListed = [&] {
        const auto pids = platform.processes.list();
        return pids && std::ranges::count(*pids, pid) == 1 &&
               platform.workspace.pids(bundleID) == std::vector{pid} &&
               std::ranges::count(platform.workspace.runningApplications(), pid, &RunningApplication::pid) ==
                   1;
    };
    const auto hasMenu = [&] {
        const auto windows = platform.windows.onScreen();
        return windows && std::ranges::count(*windows, WindowInfo{.layer = platform.windows.popUpMenuLevel(),
                                                                  .ownerPID = pid}) == 1;
    };
    expect(checks, "an app that was launched is listed", isListed());
    expect(checks, "its process has its name", platform.processes.name(pid) == bundleID);
    expect(checks, "its menu is no window before it opens", !hasMenu());
    mac.openMenu(pid);
    expect(checks, "an open menu is a window at the level of pop-up menus", hasMenu());
    mac.quit(pid);
    expect(checks, "an app that has quit is not listed", !isListed() && !platform.processes.name(pid));
    expect(checks, "its menu goes with it", !hasMenu());
    expect(checks, "what is no address is not opened", !platform.workspace.openURL(""));
}

void checkNotices(const Platform& platform, const TestMac& mac, Checks& checks) {
    std::string heard;
    std::string heardOnce;
    const auto listening = platform.workspace.observe([&](const WorkspaceNotice& notice) {
        heard += std::to_string(static_cast<int>(notice.kind)) + notice.bundleID.value_or("-") + " ";
    });
    Subscription once;
    once = platform.workspace.observe([&](const WorkspaceNotice&) {
        once.end();
        heardOnce += "!";
    });
    auto screens = platform.displays.observeChanges([&] { heard += "screens "; });
    const ProcessID agent = mac.launch("com.example.agent");
    expect(checks, "no notice comes inside the act", heard.empty(), heard);
    mac.pass(1s);
    mac.quit(agent);
    mac.pass(1s);
    expect(checks, "of an agent only the list of applications tells", heard == "9- 9- ", heard);
    heard.clear();
    const ProcessID pid = mac.launchRegular("com.example.app");
    mac.pass(1s);
    mac.quit(pid);
    mac.pass(1s);
    std::erase(heard, '9');  // the list tells of this one as well, before or after
    std::erase(heard, '-');
    expect(checks, "a regular app is announced by name", heard == " 6com.example.app  7com.example.app ",
           heard);
    heard.clear();
    mac.changeDisplays();
    mac.pass(1s);
    screens.end();
    mac.changeDisplays();
    mac.wake();
    mac.pass(1s);
    expect(checks, "notices say what happened, in order", heard == "screens 0- 2- ", heard);
    expect(checks, "an observer may end its own subscription", heardOnce == "!", heardOnce);
}

void checkOtherAppsElements(const Platform& platform, const TestMac& mac, Checks& checks) {
    const ProcessID pid = mac.launch("com.example.app");
    const auto application = platform.accessibility.application(pid, patience);
    const auto bar = elementAt(platform, application, "AXExtrasMenuBar");
    expect(checks, "an app's icons are reached from its element", bar.has_value());
    mac.setTrusted(false);
    expect(checks, "without the permission nothing is read",
           !platform.accessibility.isTrusted() && costOfFailure(platform, application));
    mac.setTrusted(true);
    mac.hang(pid);
    const auto cost = costOfFailure(platform, application);
    expect(checks, "a hung app costs the time-out of its element", isOneTimeout(cost), secondsText(cost));
    const auto reached = bar ? costOfFailure(platform, *bar) : std::nullopt;
    expect(checks, "an element that is reached from another has its time-out", isOneTimeout(reached),
           secondsText(reached));
    mac.quit(pid);
    expect(checks, "an element of an app that has quit is read without a wait",
           costOfFailure(platform, application).value_or(patience) < patience);
}

void checkAssertions(const Platform& platform, const TestMac& mac, Checks& checks) {
    PrivateFramework& framework = platform.privateFramework;
    mac.launch("com.example.a");
    mac.launch("com.example.b");
    const auto seen = [&] {
        return std::string(mac.shows("com.example.a") ? "a" : "") + (mac.shows("com.example.b") ? "b" : "");
    };
    const auto expectSeen = [&](const char* name, const std::string& wanted) {
        expect(checks, name, seen() == wanted, seen());
    };
    const auto opened = framework.open(library);
    expect(checks, "the framework can be loaded", opened.has_value());
    auto onlyA = hideAllBut(framework, mac.pass, {"com.example.a"});
    expect(checks, "an activation is answered once, later", onlyA != nullptr);
    expectSeen("an assertion shows the apps that it allows and no others", "a");
    auto onlyB = hideAllBut(framework, mac.pass, {"com.example.b"});
    expectSeen("the newer of two assertions counts", "b");
    expect(checks, "invalidating raises nothing", framework.invalidate(onlyA).has_value());
    mac.pass(1s);
    expectSeen("the older one ends without a trace", "b");
    onlyB.reset();
    mac.pass(1s);
    expectSeen("letting go of an assertion ends it", "ab");
    auto nobody = hideAllBut(framework, mac.pass, {});
    expectSeen("an empty list hides every app", "");
    expect(checks, "invalidating raises nothing, again", framework.invalidate(nobody).has_value());
    mac.pass(1s);
    expectSeen("invalidating the last assertion shows everything", "ab");
    const auto again = framework.makeConfiguration("MBAssessmentModeConfiguration", {}, {}).value_or(nullptr);
    std::string answers;
    static_cast<void>(framework.activate(
        nobody, again, [&](const auto& error) { answers += error ? "refused " : "agreed "; }));
    mac.pass(1s);
    expectSeen("an assertion that was invalidated hides nothing ever again", "ab");
    expect(checks, "and is told so", answers == "refused ", answers);
}

void checkZone(const Platform& platform, const TestMac& mac, Checks& checks) {
    const Date morning = std::chrono::sys_days(std::chrono::year{2026} / 3 / 2);
    const Date evening = morning + 20h;
    int notices = 0;
    const auto subscription = platform.workspace.observe([&](const WorkspaceNotice&) { ++notices; });
    const Calendar calendar;
    mac.setZone("UTC");
    Calendar::rereadZone();
    mac.setZone("Pacific/Auckland");
    mac.pass(1s);
    expect(checks, "nothing tells of a new time zone", notices == 0);
    expect(checks, "days count in the old zone until it is read again",
           calendar.startOfDay(evening) == morning);
    Calendar::rereadZone();
    expect(checks, "and in the new one from then on", calendar.startOfDay(evening) == morning + 11h);
}

}  // namespace velko::Contracts
