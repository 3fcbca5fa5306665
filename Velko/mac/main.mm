#import <AppKit/AppKit.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "Velko/App/AppDelegate.h"
#include "Velko/App/AppMenu.h"
#include "Velko/App/EndingSignals.h"
#include "Velko/App/Log.h"
#include "Velko/Checks/SelfCheck.h"
#include "Velko/Commands/CommandClient.h"
#include "Velko/Commands/Grammar.h"
#include "Velko/Commands/SocketDoor.h"
#include "Velko/mac/Images.h"
#include "Velko/mac/MacDesktop.h"
#include "Velko/mac/MacDialogs.h"
#import "Velko/mac/MacHotKeys.h"
#import "Velko/mac/MacMenu.h"
#include "Velko/mac/MacSelfCheck.h"
#include "Velko/mac/MacSignals.h"
#import "Velko/mac/MacStatusItem.h"
#import "Velko/mac/MacSurfaces.h"
#include "Velko/mac/Surroundings.h"
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
    velko::SocketDoor commands{platform.ports().mainThread, velko::Surroundings::commandSocket()};
    velko::MacDefaults defaults;
    velko::MacDialogs dialogs;
    velko::MacHotKeys hotKeys;
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
                                  .commands = commands,
                                  .defaults = defaults,
                                  .dialogs = dialogs,
                                  .hotKeys = hotKeys,
                                  .loginItem = loginItem,
                                  .pasteboard = pasteboard,
                                  .statusItem = statusItem,
                                  .surfaces = surfaces,
                                  .updater = updater},
                        .log = log,
                        .store = velko::LayoutStore(velko::Surroundings::layoutFile(),
                                                    velko::Surroundings::fileCalls()),
                        .engine = std::make_unique<velko::AssessmentEngine>(platform.ports()),
                        .info = velko::Surroundings::appInfo(),
                        .managed = {.file = velko::Surroundings::managedLayoutFile()}},
         .propertyLists = propertyLists,
         .homeFolder = velko::Surroundings::homeFolder()},
    };
    velko::MacSignals signals;
    velko::EndingSignals endingSignals{signals, [this] { application.terminate(); }};
};

}  // namespace

@implementation VLKAppDelegate {
    std::unique_ptr<Program> _program;
    // What was opened before the program existed, because it was started with it.
    std::vector<std::filesystem::path> _waiting;
    std::vector<std::string> _waitingAddresses;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    _program = std::make_unique<Program>();
    velko::showMainMenu(_program->delegate.menus());
    _program->delegate.didFinishLaunching();
    for (const auto& file : std::exchange(_waiting, {})) {
        _program->delegate.openFile(file);
    }
    for (const auto& address : std::exchange(_waitingAddresses, {})) {
        _program->delegate.openAddress(address);
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
        } else if (_program) {
            _program->delegate.openAddress(velko::portable(url.absoluteString));
        } else {
            _waitingAddresses.emplace_back(velko::portable(url.absoluteString));
        }
    }
}

@end

namespace {

int runApp() {
    // The application does not own its delegate.
    [[clang::objc_precise_lifetime]] VLKAppDelegate* delegate = [[VLKAppDelegate alloc] init];
    NSApplication* application = [NSApplication sharedApplication];
    application.delegate = delegate;
    [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
    [application run];
    return 0;
}

/// The program that people and scripts call. It has its own name, or a command as its first argument.
int giveCommand(const std::vector<std::string>& arguments) {
    std::error_code error;
    return velko::commands::runCommandLine(
        arguments,
        {.socket = velko::commands::socketInEnvironment().value_or(velko::Surroundings::commandSocket()),
         .folder = std::filesystem::current_path(error),
         .version = VELKO_VERSION,
         .out = velko::commands::printTo(stdout),
         .error = velko::commands::printTo(stderr)});
}

}  // namespace

int main(int argc, char** argv) {
    @autoreleasepool {
        const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
        if (velko::commands::isCommandLine(argc > 0 ? argv[0] : "", arguments)) {
            return giveCommand(arguments);
        }
        const auto command = velko::SelfCheck::parse(arguments);
        return command.kind == velko::SelfCheck::Command::Kind::runApp ? runApp()
                                                                       : velko::runSelfCheck(command);
    }
}
