#import <AppKit/AppKit.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "Velko/Checks/SelfCheck.h"
#import "Velko/mac/MacAppDelegate.h"
#include "Velko/mac/Surroundings.h"
#import "Velko/mac/TreeView.h"
#include "VelkoEngine/mac/MacPlatform.h"

namespace {

using velko::SelfCheck::Command;

/// Runs the main loop for a while.
void pass(velko::MainThread& mainThread, velko::MainThread::Uptime duration) {
    const auto end = mainThread.now() + duration;
    for (auto left = duration; left.count() > 0; left = end - mainThread.now()) {
        CFRunLoopRunInMode(kCFRunLoopDefaultMode, velko::secondsOf(left), false);
    }
}

/// Draws trees into a view that no window shows.
velko::RenderingCheck::Draw offScreen(velko::MainThread& mainThread, velko::AppIcons& icons) {
    VLKTreeView* view = [[VLKTreeView alloc] initWithMainThread:mainThread icons:icons];
    return [view](const velko::view::Node& tree) {
        [view show:tree];
        [view setFrameSize:[view fit]];
        [view layoutSubtreeIfNeeded];
        return [view drawn];
    };
}

[[noreturn]] void check() {
    // Registers this process with the system, as the app itself is when it runs.
    [[NSApplication sharedApplication] finishLaunching];
    velko::MacPlatform platform;
    const velko::Platform ports = platform.ports();
    velko::AppIcons icons;
    const velko::MacPropertyListReader propertyLists;
    const auto checks = velko::SelfCheck::run({
        .platform = ports,
        .propertyLists = propertyLists,
        .layoutFile = velko::Surroundings::layoutFile(),
        .logFile = velko::Surroundings::logFile(),
        .pass = [&](velko::MainThread::Uptime duration) { pass(ports.mainThread, duration); },
        .draw = offScreen(ports.mainThread, icons),
    });
    std::fputs(velko::SelfCheck::report(checks).c_str(), stdout);
    std::fflush(stdout);
    // A read of an app that hangs may still be under way, and must not find the platform gone.
    std::_Exit(velko::SelfCheck::passed(checks) ? 0 : 1);
}

int dump(velko::ProcessID pid) {
    velko::MacPlatform platform;
    std::fputs(velko::SelfCheck::dump(platform.ports(), pid).c_str(), stdout);
    return 0;
}

int runApp() {
    // The application does not hold its delegate.
    [[clang::objc_precise_lifetime]] VLKAppDelegate* delegate = [[VLKAppDelegate alloc] init];
    NSApplication* application = [NSApplication sharedApplication];
    application.delegate = delegate;
    [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
    [application run];
    return 0;
}

int run(const Command& command) {
    switch (command.kind) {
        case Command::Kind::runApp:
            return runApp();
        case Command::Kind::check:
            check();
        case Command::Kind::dump:
            return dump(command.pid);
        case Command::Kind::usage:
            break;
    }
    std::fprintf(stderr, "%s\n", velko::SelfCheck::usage);
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    @autoreleasepool {
        return run(velko::SelfCheck::parse(std::vector<std::string>(argv + std::min(argc, 1), argv + argc)));
    }
}
