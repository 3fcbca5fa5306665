#include <algorithm>
#include <limits>
#include <set>
#include <string>
#include <utility>

#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Pointer.h"
#include "VelkoEngine/Ports/PrivateFramework.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Screen.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::Contracts {

void expect(Checks& checks, std::string name, bool passed, std::string seen) {
    checks.push_back({.name = std::move(name), .passed = passed, .seen = std::move(seen)});
}

void checkWorkspace(const Platform& platform, Checks& checks) {
    Workspace& workspace = platform.workspace;
    const auto applications = workspace.runningApplications();
    const auto seen = std::to_string(applications.size()) + " applications";
    expect(checks, "workspace: this process is among the running applications",
           std::ranges::count(applications, platform.processes.ownPID(), &RunningApplication::pid) == 1,
           seen);

    std::set<ProcessID> pids;
    for (const auto& application : applications) {
        pids.insert(application.pid);
    }
    expect(checks, "workspace: every running application has a process number of its own",
           pids.size() == applications.size(), seen);

    const auto lost = std::ranges::find_if(applications, [&](const auto& application) {
        const auto found =
            application.bundleID ? workspace.pids(*application.bundleID) : std::vector{application.pid};
        return std::ranges::count(found, application.pid) != 1;
    });
    expect(checks, "workspace: an application is found by its identifier", lost == applications.end(),
           lost == applications.end() ? "" : lost->bundleID.value_or(""));
    const auto misnamed = std::ranges::find_if(applications, [&](const auto& application) {
        return workspace.bundleID(application.pid) != application.bundleID;
    });
    expect(checks, "workspace: a process tells the identifier of its application",
           misnamed == applications.end(),
           misnamed == applications.end() ? "" : misnamed->bundleID.value_or("none"));
    expect(checks, "workspace: a process that does not exist has no identifier",
           !workspace.bundleID(std::numeric_limits<ProcessID>::max()));
    expect(checks, "workspace: nobody is found by an identifier that nobody has",
           workspace.pids("app.velko.nobody-has-this").empty() &&
               !workspace.installedName("app.velko.nobody-has-this"));
    const std::vector<std::string> names{"app 10", "App 2", "zoo", "app 10", "Bee"};
    expect(checks, "workspace: names are sorted by their numbers, and without their case",
           workspace.placesOf(names) == std::vector<std::size_t>{1, 0, 3, 1, 2});

    Subscription subscription = workspace.observe([](const WorkspaceNotice&) {});
    const bool wasActive = subscription.isActive();
    subscription.end();
    expect(checks, "workspace: observing can be ended", wasActive && !subscription.isActive());
}

namespace {

constexpr ProcessID nobody = std::numeric_limits<ProcessID>::max();

}  // namespace

void checkProcesses(const Processes& processes, Checks& checks) {
    const ProcessID own = processes.ownPID();
    expect(checks, "processes: this process has a number", own > 0, std::to_string(own));

    const auto pids = processes.list();
    expect(checks, "processes: the list holds this process once", pids && std::ranges::count(*pids, own) == 1,
           pids ? std::to_string(pids->size()) + " processes" : "no list");

    const auto name = processes.name(own);
    expect(checks, "processes: this process has a name without a zero byte",
           name && !name->empty() && name->find('\0') == std::string::npos, name.value_or("no name"));
    expect(checks, "processes: a process that does not exist has no name", !processes.name(nobody));

    const auto usage = processes.resourceUsage(own);
    expect(checks, "processes: what this process has used is known", usage && usage->physicalFootprint > 0,
           usage ? std::to_string(usage->physicalFootprint) + " bytes" : "nothing");
    const TimeBase base = processes.timeBase();
    expect(checks, "processes: the unit of time makes sense", base.numerator > 0 && base.denominator > 0,
           std::to_string(base.numerator) + " / " + std::to_string(base.denominator));
    expect(checks, "processes: the null signal tells who exists",
           processes.nullSignal(own) == NullSignal::delivered &&
               processes.nullSignal(nobody) == NullSignal::noSuchProcess);
    expect(checks, "processes: a process that does not exist has used nothing",
           !processes.resourceUsage(nobody));
}

namespace {

bool isWithin(const Rect& inner, const Rect& outer) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.maxX() <= outer.maxX() &&
           inner.maxY() <= outer.maxY();
}

}  // namespace

void checkDisplays(Displays& displays, Checks& checks) {
    const auto all = displays.displays();
    const auto seen = std::to_string(all.size()) + " displays";
    expect(checks, "displays: the primary screen comes first and holds the origin",
           all.empty() || (all.front().frame.x == 0 && all.front().frame.y == 0), seen);
    expect(checks, "displays: every screen has a size and its visible frame lies within it",
           std::ranges::all_of(all,
                               [](const Display& display) {
                                   return display.frame.width > 0 && display.frame.height > 0 &&
                                          isWithin(display.visibleFrame, display.frame);
                               }),
           seen);
    expect(checks, "displays: room beside a camera housing is only where one is",
           std::ranges::all_of(all, [](const Display& display) {
               const auto housing = MenuBarStrip::housing(display);
               return display.safeAreaTop >= 0 &&
                      (!housing || (display.safeAreaTop > 0 && isWithin(*housing, display.frame)));
           }));
    const double thickness = displays.statusBarThickness();
    expect(checks, "displays: the status bar is as high as a line of icons",
           thickness > 10 && thickness < 100, std::to_string(thickness));

    Subscription subscription = displays.observeChanges([] {});
    const bool wasActive = subscription.isActive();
    subscription.end();
    expect(checks, "displays: observing can be ended", wasActive && !subscription.isActive());
}

void checkWindows(const Windows& windows, Checks& checks) {
    const auto onScreen = windows.onScreen();
    expect(checks, "windows: the windows on screen can be read and have a level, an owner and a place",
           onScreen && std::ranges::any_of(*onScreen,
                                           [](const WindowInfo& window) {
                                               return window.layer && window.ownerPID &&
                                                      *window.ownerPID > 0 && window.frame &&
                                                      window.frame->width > 0;
                                           }),
           onScreen ? std::to_string(onScreen->size()) + " windows" : "no list");
    const auto level = windows.popUpMenuLevel();
    expect(checks, "windows: pop-up menus lie above ordinary windows", level > 0, std::to_string(level));
}

void checkPointer(const Platform& platform, Checks& checks) {
    // Without the permission the system would ask the user for another one. What it says may be out of date,
    // so another app has to confirm it.
    if (!platform.accessibility.isTrusted() ||
        TrustEvidence::ask(platform, TrustEvidence::witnesses(platform)) != true) {
        return;
    }
    const auto tap = platform.pointer.tapClicks([](const ClickTapEvent&) {});
    expect(checks, "pointer: with the permission clicks can be listened for", tap != nullptr);
    if (tap) {
        tap->enable();
        const auto second = platform.pointer.tapClicks([](const ClickTapEvent&) {});
        expect(checks, "pointer: several may listen", second != nullptr);
    }
}

namespace {

constexpr auto nobodysClass = "VelkoNobodyHasThisClass";

/// What a framework that could be loaded says of one of its classes.
void checkPresent(const PrivateFramework& framework, const std::string& className, Checks& checks) {
    const auto image = framework.imagePath(className);
    expect(checks, "framework: a class that is there has a library", image && !image->empty(),
           image.value_or("none"));
    const auto classes = framework.methods(image.value_or(""));
    const bool isListed = classes && classes->contains(className);
    expect(checks, "framework: that library lists the class", isListed);
    if (isListed) {
        expect(checks, "framework: instances respond to the methods that are listed",
               std::ranges::all_of(classes->at(className), [&](const RuntimeMethod& method) {
                   return method.isClassMethod || framework.instancesRespond(className, method.selector);
               }));
    }
    expect(checks, "framework: instances do not respond to what nobody has",
           !framework.instancesRespond(className, "velkoNobodyHasThisSelector"));
}

}  // namespace

void checkPrivateFramework(PrivateFramework& framework, const std::string& libraryPath,
                           const std::string& className, Checks& checks) {
    expect(checks, "framework: a library that does not exist cannot be loaded",
           !framework.open("/System/Library/PrivateFrameworks/VelkoNobodyHasThis.framework/Nobody"));
    const auto opened = framework.open(libraryPath);
    expect(checks, "framework: loading again gives the same answer",
           framework.open(libraryPath).has_value() == opened.has_value(),
           opened ? "loaded" : "not loaded: " + opened.error());

    const auto configuration = framework.makeConfiguration(nobodysClass, {0}, {"app.velko.mac"});
    const auto assertion = framework.makeAssertion(nobodysClass);
    expect(checks, "framework: a class that is missing is an ordinary answer",
           !framework.hasClass(nobodysClass) && !framework.instancesRespond(nobodysClass, "init") &&
               !framework.imagePath(nobodysClass) && configuration && !*configuration && assertion &&
               !*assertion);
    const auto nothing = framework.methods("/velko/nobody/has/this");
    expect(checks, "framework: an unknown library lists no classes", nothing && nothing->empty());
    expect(checks, "framework: invalidating nothing is harmless", framework.invalidate(nullptr).has_value());
    if (framework.hasClass(className)) {
        checkPresent(framework, className, checks);
    }
}

}  // namespace velko::Contracts
