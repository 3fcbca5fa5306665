#import "Velko/mac/MacStatusItem.h"

#include <chrono>
#include <optional>
#include <utility>

#import "Velko/mac/Images.h"
#import "Velko/mac/MacMenu.h"
#import "Velko/mac/RunLoop.h"
#include "VelkoEngine/mac/Conversions.h"

using Click = velko::StatusItem::Click;

/// Hears of clicks on the button, and of the menu while that is open.
@interface VLKStatusItemTarget : NSObject <NSMenuDelegate>
- (instancetype)initWithItem:(NSStatusItem*)item clicked:(std::function<void(Click)>)clicked;
- (void)clicked:(id)sender;
- (void)open:(NSMenu*)menu closed:(std::function<void()>)closed;
@property(nonatomic, readonly, getter=isMenuOpen) BOOL menuOpen;
@end

namespace velko {

namespace {

StatusItem::Event::Type typeOf(NSEventType type) {
    switch (type) {
        case NSEventTypeLeftMouseDown:
        case NSEventTypeLeftMouseUp:
            return StatusItem::Event::Type::leftMouse;
        case NSEventTypeRightMouseDown:
        case NSEventTypeRightMouseUp:
            return StatusItem::Event::Type::rightMouse;
        case NSEventTypeSystemDefined:
            return StatusItem::Event::Type::systemDefined;
        default:
            return StatusItem::Event::Type::other;
    }
}

std::optional<StatusItem::Event> eventOf(NSEvent* event) {
    if (event == nil) {
        return std::nullopt;
    }
    const NSTimeInterval age = [NSProcessInfo processInfo].systemUptime - event.timestamp;
    StatusItem::Event result{
        .type = typeOf(event.type),
        .age = std::chrono::duration_cast<MainThread::Uptime>(std::chrono::duration<double>(age)),
        .option = (event.modifierFlags & NSEventModifierFlagOption) != 0,
        .control = (event.modifierFlags & NSEventModifierFlagControl) != 0};
    // Events of other types raise an exception when they are asked for these.
    if (event.type == NSEventTypeSystemDefined) {
        result.subtype = event.subtype;
        result.data = event.data1;
    }
    return result;
}

}  // namespace

}  // namespace velko

@implementation VLKStatusItemTarget {
    NSStatusItem* _item;
    std::function<void(Click)> _clicked;
    // It keeps the last menu until the next one opens: the action of a chosen item comes after the menu has
    // closed.
    NSMenu* _menu;
    std::function<void()> _closed;
}

- (instancetype)initWithItem:(NSStatusItem*)item clicked:(std::function<void(Click)>)clicked {
    self = [super init];
    if (self != nil) {
        _item = item;
        _clicked = std::move(clicked);
    }
    return self;
}

- (void)clicked:(id)sender {
    const NSEventModifierFlags keys = [NSEvent modifierFlags];
    _clicked({.event = velko::eventOf([NSApplication sharedApplication].currentEvent),
              .pressedButtons = static_cast<unsigned>([NSEvent pressedMouseButtons]),
              .option = (keys & NSEventModifierFlagOption) != 0,
              .control = (keys & NSEventModifierFlagControl) != 0,
              .isVoiceOverOn = [NSWorkspace sharedWorkspace].voiceOverEnabled == YES});
}

- (void)open:(NSMenu*)menu closed:(std::function<void()>)closed {
    if (_menuOpen) {
        return;
    }
    _menu = menu;
    _closed = std::move(closed);
    menu.delegate = self;
    _item.menu = menu;
    [_item.button performClick:nil];
}

- (void)menuWillOpen:(NSMenu*)menu {
    _menuOpen = YES;
}

- (void)menuDidClose:(NSMenu*)menu {
    _menuOpen = NO;
    _item.menu = nil;
    const auto closed = _closed;
    if (closed) {
        closed();
    }
}

@end

namespace velko {

namespace {

NSImage* native(const view::Drawing& drawing) {
    return Painting::templateImage(drawing);
}

NSImage* native(const StatusItem::Symbol& symbol) {
    NSImage* image = symbolImage(symbol.name, symbol.description);
    [image setTemplate:YES];
    return image;
}

}  // namespace

void MacStatusItem::install(const std::string& autosaveName, const std::string& label,
                            std::function<void(Click)> clicked) {
    item_ = [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
    item_.autosaveName = velko::native(autosaveName);
    target_ = [[VLKStatusItemTarget alloc] initWithItem:item_ clicked:std::move(clicked)];
    NSStatusBarButton* button = item_.button;
    button.target = target_;
    button.action = @selector(clicked:);
    [button sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
    button.accessibilityLabel = velko::native(label);
}

void MacStatusItem::setImage(const Image& image) {
    item_.button.image = std::visit([](const auto& kind) { return native(kind); }, image);
}

void MacStatusItem::setToolTip(const std::string& text) {
    item_.button.toolTip = velko::native(text);
}

void MacStatusItem::openMenu(view::Menu menu, std::function<void()> closed) {
    NSMenu* native = makeMenu(menu, icons_);
    icons_.forget();
    VLKStatusItemTarget* target = target_;
    onMainRunLoop(^{
      [target open:native closed:closed];
    });
}

bool MacStatusItem::isMenuOpen() const {
    return target_.menuOpen;
}

std::optional<Rect> MacStatusItem::windowFrame() const {
    NSWindow* window = item_.button.window;
    return window == nil ? std::nullopt : std::optional(portable(window.frame));
}

void MacStatusItem::closeMenu() {
    [item_.menu cancelTracking];
}

void MacStatusItem::remove() {
    if (item_ != nil) {
        [[NSStatusBar systemStatusBar] removeStatusItem:item_];
    }
    item_ = nil;
}

}  // namespace velko
