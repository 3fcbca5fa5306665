#import <AppKit/AppKit.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppDelegate.h"
#include "Velko/App/AppMenu.h"
#include "Velko/App/Log.h"
#include "Velko/Checks/SelfCheck.h"
#include "Velko/mac/Images.h"
#include "Velko/mac/MacDesktop.h"
#include "Velko/mac/MacDialogs.h"
#import "Velko/mac/MacMenu.h"
#import "Velko/mac/MacStatusItem.h"
#import "Velko/mac/MacSurfaces.h"
#include "Velko/mac/Surroundings.h"
#import "Velko/mac/TreeView.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/mac/Conversions.h"
#include "VelkoEngine/mac/MacPlatform.h"

/// Makes the program's objects, and passes on what the desktop tells it.
@interface VLKAppDelegate : NSObject <NSApplicationDelegate>
@end

namespace {

/// Everything that lives as long as the program. Each object needs only those before it.
struct Program {
    velko::MacPlatform platform;
    velko::AppIcons icons;
    velko::MacApplication application;
    velko::MacDefaults defaults;
    velko::MacDialogs dialogs;
    velko::MacLoginItem loginItem;
    velko::MacPasteboard pasteboard;
    velko::MacStatusItem statusItem{icons};
    velko::MacSurfaces surfaces{platform.ports().mainThread, icons};
    velko::MacUpdater updater;
    velko::MacPropertyListReader propertyLists;
    velko::Log log{platform.ports().mainThread, velko::Surroundings::logFile()};
    velko::AppDelegate delegate{
        {.controller = {.platform = platform.ports(),
                        .ports = {.application = application,
                                  .defaults = defaults,
                                  .dialogs = dialogs,
                                  .loginItem = loginItem,
                                  .pasteboard = pasteboard,
                                  .statusItem = statusItem,
                                  .surfaces = surfaces,
                                  .updater = updater},
                        .log = log,
                        .store = velko::LayoutStore(velko::Surroundings::layoutFile(),
                                                    velko::Surroundings::fileCalls()),
                        .engine = std::make_unique<velko::AssessmentEngine>(platform.ports()),
                        .info = velko::Surroundings::appInfo()},
         .propertyLists = propertyLists,
         .homeFolder = velko::Surroundings::homeFolder()},
    };
};

}  // namespace

@implementation VLKAppDelegate {
    std::unique_ptr<Program> _program;
    // Files that were opened before the program existed, because it was started with them.
    std::vector<std::filesystem::path> _waiting;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    [NSApplication sharedApplication].mainMenu = velko::makeMainMenu(velko::AppMenu::menus());
    _program = std::make_unique<Program>();
    _program->delegate.didFinishLaunching();
    for (const auto& file : std::exchange(_waiting, {})) {
        _program->delegate.openFile(file);
    }
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    if (_program) {
        // The objects stay until the process ends: reads and activations on other threads may still use the
        // platform.
        _program->delegate.willTerminate();
    }
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
    return YES;
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)hasVisibleWindows {
    if (_program) {
        _program->delegate.reopen(hasVisibleWindows);
    }
    return NO;
}

- (void)application:(NSApplication*)application openURLs:(NSArray<NSURL*>*)urls {
    for (NSURL* url in urls) {
        if (url.fileURL && _program) {
            _program->delegate.openFile(velko::portable(url.path));
        } else if (url.fileURL) {
            _waiting.emplace_back(velko::portable(url.path));
        }
    }
}

@end

namespace {

using velko::SelfCheck::Command;

/// Runs the main loop for a while.
void pass(velko::MainThread& mainThread, velko::MainThread::Uptime duration) {
    const auto end = mainThread.now() + duration;
    for (auto left = duration; left.count() > 0; left = end - mainThread.now()) {
        CFRunLoopRunInMode(kCFRunLoopDefaultMode, velko::secondsOf(left), false);
    }
}

/// Draws trees into a view that is in no window.
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
    // Registers this process with the system, as it happens when the app runs.
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
    // A read of an app that hangs may still be going on, and needs the platform.
    std::_Exit(velko::SelfCheck::passed(checks) ? 0 : 1);
}

int dump(velko::ProcessID pid) {
    velko::MacPlatform platform;
    std::fputs(velko::SelfCheck::dump(platform.ports(), pid).c_str(), stdout);
    return 0;
}

int runApp() {
    // The application does not own its delegate.
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
