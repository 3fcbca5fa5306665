#import <AppKit/AppKit.h>

#include <utility>

#import "Velko/mac/MacMenu.h"
#include "VelkoEngine/mac/Conversions.h"

/// An entry that does something of Velko's.
@interface VLKMainMenuAction : NSObject <NSMenuItemValidation>
- (instancetype)initWithEntry:(velko::AppMenu::Entry)entry;
- (void)run:(id)sender;
@end

@implementation VLKMainMenuAction {
    velko::AppMenu::Entry _entry;
}

- (instancetype)initWithEntry:(velko::AppMenu::Entry)entry {
    self = [super init];
    if (self != nil) {
        _entry = std::move(entry);
    }
    return self;
}

/// What has been typed where the keyboard is; nil where nothing has it.
- (NSUndoManager*)typed {
    return [NSApplication sharedApplication].keyWindow.firstResponder.undoManager;
}

- (BOOL)isForTyped {
    using Command = velko::AppMenu::Command;
    return (_entry.command == Command::undo && self.typed.canUndo) ||
           (_entry.command == Command::redo && self.typed.canRedo);
}

- (void)run:(id)sender {
    if (!self.isForTyped) {
        const auto action = _entry.action;
        action();
    } else if (_entry.command == velko::AppMenu::Command::undo) {
        [self.typed undo];
    } else {
        [self.typed redo];
    }
}

- (BOOL)validateMenuItem:(NSMenuItem*)item {
    const auto state =
        _entry.state && !self.isForTyped ? _entry.state() : velko::AppMenu::State{.title = _entry.title};
    item.title = velko::native(state.title);
    return state.isEnabled;
}

@end

namespace velko {

namespace {

SEL selector(AppMenu::Command command) {
    switch (command) {
        case AppMenu::Command::about:
            return @selector(orderFrontStandardAboutPanel:);
        case AppMenu::Command::hide:
            return @selector(hide:);
        case AppMenu::Command::hideOthers:
            return @selector(hideOtherApplications:);
        case AppMenu::Command::showAll:
            return @selector(unhideAllApplications:);
        case AppMenu::Command::quit:
            return @selector(terminate:);
        case AppMenu::Command::closeWindow:
            return @selector(performClose:);
        case AppMenu::Command::minimizeWindow:
            return @selector(performMiniaturize:);
        case AppMenu::Command::zoomWindow:
            return @selector(performZoom:);
        case AppMenu::Command::bringAllToFront:
            return @selector(arrangeInFront:);
        case AppMenu::Command::cut:
            return @selector(cut:);
        case AppMenu::Command::paste:
            return @selector(paste:);
        case AppMenu::Command::copy:
            return @selector(copy:);
        case AppMenu::Command::selectAll:
            return @selector(selectAll:);
        case AppMenu::Command::undo:
        case AppMenu::Command::redo:
            break;  // they have actions of Velko's, which ask what has the keyboard
    }
    return nullptr;
}

NSMenuItem* makeEntry(const AppMenu::Entry& entry) {
    if (entry.title.empty()) {
        return [NSMenuItem separatorItem];
    }
    // Without a target the action goes to what has the keyboard.
    NSMenuItem* item =
        [[NSMenuItem alloc] initWithTitle:native(entry.title)
                                   action:entry.command ? selector(*entry.command) : nullptr
                            keyEquivalent:entry.key == 0 ? @"" : native(std::string(1, entry.key))];
    item.keyEquivalentModifierMask = NSEventModifierFlagCommand |
                                     (entry.withOption ? NSEventModifierFlagOption : 0) |
                                     (entry.withShift ? NSEventModifierFlagShift : 0);
    if (entry.action) {
        VLKMainMenuAction* action = [[VLKMainMenuAction alloc] initWithEntry:entry];
        item.target = action;
        item.action = @selector(run:);
        // An item does not own its target, but it owns this.
        item.representedObject = action;
    }
    return item;
}

}  // namespace

void showMainMenu(const std::vector<AppMenu::Menu>& menus) {
    NSApplication* application = [NSApplication sharedApplication];
    NSMenu* main = [[NSMenu alloc] initWithTitle:@""];
    for (const AppMenu::Menu& menu : menus) {
        NSMenu* submenu = [[NSMenu alloc] initWithTitle:native(menu.title)];
        for (const AppMenu::Entry& entry : menu.entries) {
            [submenu addItem:makeEntry(entry)];
        }
        NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:native(menu.title)
                                                      action:nullptr
                                               keyEquivalent:@""];
        item.submenu = submenu;
        [main addItem:item];
        if (menu.role == AppMenu::Menu::Role::windows) {
            application.windowsMenu = submenu;
        } else if (menu.role == AppMenu::Menu::Role::help) {
            application.helpMenu = submenu;
        }
    }
    application.mainMenu = main;
}

}  // namespace velko
