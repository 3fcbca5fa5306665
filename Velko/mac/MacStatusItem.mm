#import "Velko/mac/MacStatusItem.h"

#include <utility>

#import "Velko/mac/MacMenu.h"
#import "Velko/mac/Painting.h"
#include "VelkoEngine/mac/Conversions.h"

using Click = velko::StatusItem::Click;

/// Hears the button, and the menu that hangs from the item while it is open.
@interface VLKStatusItemTarget : NSObject <NSMenuDelegate>
- (instancetype)initWithItem:(NSStatusItem*)item clicked:(std::function<void(Click)>)clicked;
- (void)clicked:(id)sender;
- (void)open:(NSMenu*)menu;
@end

@implementation VLKStatusItemTarget {
    NSStatusItem* _item;
    std::function<void(Click)> _clicked;
    // The last one stays until the next: what was chosen from it comes after it has closed.
    NSMenu* _menu;
    BOOL _isMenuOpen;
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
    NSEvent* event = [NSApplication sharedApplication].currentEvent;
    const BOOL isRight = event.type == NSEventTypeRightMouseUp;
    const BOOL isByMouse = isRight || event.type == NSEventTypeLeftMouseUp;
    // Whoever presses by VoiceOver holds its keys, Control and Option, and means a plain click.
    const BOOL isByVoiceOver = !isByMouse && [NSWorkspace sharedWorkspace].voiceOverEnabled;
    const NSEventModifierFlags flags = isByVoiceOver ? 0 : event.modifierFlags | [NSEvent modifierFlags];
    _clicked({.isRight = isRight,
              .option = (flags & NSEventModifierFlagOption) != 0,
              .control = (flags & NSEventModifierFlagControl) != 0});
}

- (void)open:(NSMenu*)menu {
    if (_isMenuOpen) {
        return;
    }
    _menu = menu;
    menu.delegate = self;
    _item.menu = menu;
    [_item.button performClick:nil];
}

- (void)menuWillOpen:(NSMenu*)menu {
    _isMenuOpen = YES;
}

- (void)menuDidClose:(NSMenu*)menu {
    _isMenuOpen = NO;
    _item.menu = nil;
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

void MacStatusItem::openMenu(view::Menu menu) {
    NSMenu* native = makeMenu(menu, icons_);
    VLKStatusItemTarget* target = target_;
    // From the run loop itself: amid a piece of our work, the menu would hold up all the rest.
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      [target open:native];
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

NSView* MacStatusItem::button() const {
    return item_.button;
}

}  // namespace velko
