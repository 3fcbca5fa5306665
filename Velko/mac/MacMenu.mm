#import "Velko/mac/MacMenu.h"

#include <functional>
#include <utility>

#import "Velko/mac/NewIn27.h"
#include "VelkoEngine/mac/Conversions.h"

/// The action of a menu item.
@interface VLKMenuAction : NSObject
- (instancetype)initWithAction:(std::function<void()>)action;
- (void)run:(id)sender;
@end

@implementation VLKMenuAction {
    std::function<void()> _action;
}

- (instancetype)initWithAction:(std::function<void()>)action {
    self = [super init];
    if (self != nil) {
        _action = std::move(action);
    }
    return self;
}

- (void)run:(id)sender {
    // The action may destroy the menu, and this object with it.
    const auto action = _action;
    action();
}

@end

namespace velko {

namespace {

constexpr double iconPoints = 16;

NSMenuItem* plainItem(const std::string& title, SEL action, NSString* key) {
    return [[NSMenuItem alloc] initWithTitle:native(title) action:action keyEquivalent:key];
}

NSMenuItem* makeEntry(const view::MenuItem& entry, AppIcons& icons) {
    // The system adds Command to the key.
    NSString* key = entry.key == 0 ? @"" : native(std::string(1, entry.key));
    NSMenuItem* item = plainItem(entry.title, nullptr, key);
    if (entry.action) {
        VLKMenuAction* action = [[VLKMenuAction alloc] initWithAction:entry.action];
        item.target = action;
        item.action = @selector(run:);
        // An item does not own its target, but it owns this.
        item.representedObject = action;
    }
    item.image = entry.appIcon ? icons.icon(*entry.appIcon, iconPoints) : symbolImage(entry.symbol);
    // Setting it without an image would leave empty space.
    if (item.image != nil) {
        NewIn27::showImage(item);
    }
    item.toolTip = entry.help.empty() ? nil : native(entry.help);
    item.enabled = entry.isEnabled;
    item.state = entry.isChecked ? NSControlStateValueOn : NSControlStateValueOff;
    if (!entry.submenu.empty()) {
        item.submenu = makeMenu(entry.submenu, icons);
    }
    return item;
}

NSMenuItem* makeItem(const view::MenuItem& item, AppIcons& icons) {
    switch (item.kind) {
        case view::MenuItem::Kind::separator:
            return [NSMenuItem separatorItem];
        case view::MenuItem::Kind::header:
            return [NSMenuItem sectionHeaderWithTitle:native(item.title)];
        case view::MenuItem::Kind::entry:
            break;
    }
    return makeEntry(item, icons);
}

}  // namespace

NSMenu* makeMenu(const view::Menu& menu, AppIcons& icons) {
    NSMenu* result = [[NSMenu alloc] initWithTitle:@""];
    fillMenu(result, menu, icons);
    return result;
}

void fillMenu(NSMenu* native, const view::Menu& menu, AppIcons& icons) {
    native.autoenablesItems = NO;
    [native removeAllItems];
    for (const view::MenuItem& item : menu) {
        [native addItem:makeItem(item, icons)];
    }
}

}  // namespace velko
