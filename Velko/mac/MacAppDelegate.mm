#import "Velko/mac/MacAppDelegate.h"

#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include "Velko/App/AppDelegate.h"
#include "Velko/App/AppMenu.h"
#include "Velko/App/Log.h"
#include "Velko/mac/Images.h"
#include "Velko/mac/MacApplication.h"
#include "Velko/mac/MacDefaults.h"
#include "Velko/mac/MacDialogs.h"
#include "Velko/mac/MacLoginItem.h"
#import "Velko/mac/MacMenu.h"
#include "Velko/mac/MacPasteboard.h"
#import "Velko/mac/MacStatusItem.h"
#import "Velko/mac/MacSurfaces.h"
#import "Velko/mac/MacUpdater.h"
#include "Velko/mac/Surroundings.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/mac/Conversions.h"
#include "VelkoEngine/mac/MacPlatform.h"

namespace {

/// Everything that lives as long as the program, in the order in which it depends on what came before.
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
    // Opened before the program was there: those that it was started with.
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
        // The program itself stays for as long as the process: reads and activations that are under way on
        // other threads still come to its platform.
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
