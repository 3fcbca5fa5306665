#import "Velko/mac/TreeView.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include "Velko/View/Tree.h"
#import "Velko/mac/Keys.h"
#import "Velko/mac/MacMenu.h"
#import "Velko/mac/TreeRenderer.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoEngine/Ports/Task.h"
#include "VelkoEngine/mac/Conversions.h"

namespace {

/// Weaker than the window's own size.
constexpr NSLayoutPriority weakEdge = 490;
/// Wider than every text of ours on one line.
constexpr CGFloat widestLine = 2000;

/// Holds content to the height of the screen: what scrolls gives way to it, texts and controls do not.
constexpr NSLayoutPriority ceilingPriority = 740;
constexpr CGFloat titleBarHeight = 40;

/// The greatest height of content on the view's screen; while the view is on none, on the primary screen.
CGFloat highestContent(NSView* view) {
    NSWindow* window = view.window;
    NSScreen* screen = window.screen == nil ? [NSScreen screens].firstObject : window.screen;
    // A toolbar makes the window's own part higher.
    const CGFloat around = window.contentView == view ? window.frame.size.height - view.frame.size.height : 0;
    return screen == nil ? widestLine : screen.visibleFrame.size.height - std::max(around, titleBarHeight);
}

void addDrawn(NSView* view, std::vector<velko::RenderingCheck::DrawnView>& views) {
    if (view.identifier != nil) {
        views.push_back({.id = velko::portable(view.identifier),
                         .words = velko::portable(view.accessibilityLabel),
                         .size = velko::portable(view.frame.size),
                         .view = (__bridge const void*)view});
    }
    for (NSView* child in view.subviews) {
        addDrawn(child, views);
    }
}

NSView* viewNamed(NSView* view, NSString* identifier) {
    if ([view.identifier isEqualToString:identifier]) {
        return view;
    }
    for (NSView* child in view.subviews) {
        if (NSView* found = viewNamed(child, identifier)) {
            return found;
        }
    }
    return nil;
}

void holdWeakly(NSLayoutConstraint* edge) {
    edge.priority = weakEdge;
    edge.active = YES;
}

}  // namespace

@implementation VLKTreeView {
    velko::MainThread* _mainThread;
    velko::AppIcons* _icons;
    std::unique_ptr<velko::TreeRenderer> _renderer;
    std::shared_ptr<const velko::view::Node> _tree;
    NSView* _content;
    NSLayoutConstraint* _ceiling;
    velko::Task _correction;
    NSInteger _openMenus;
    BOOL _isDragging;
}

- (instancetype)initWithMainThread:(velko::MainThread&)mainThread icons:(velko::AppIcons&)icons {
    self = [super initWithFrame:NSRect{}];
    if (self != nil) {
        _mainThread = &mainThread;
        _icons = &icons;
        _renderer =
            std::make_unique<velko::TreeRenderer>(velko::RenderContext{.actions = self, .icons = icons});
    }
    return self;
}

- (void)show:(velko::view::Node)tree {
    _tree = std::make_shared<const velko::view::Node>(std::move(tree));
    [self render];
}

- (void)stop {
    _tree.reset();
}

- (void)render {
    const auto tree = _tree;
    if (!tree) {
        return;
    }
    NSView* content = _renderer->render(*tree);
    if (content == _content) {
        return;
    }
    [_content removeFromSuperview];
    _content = content;
    [self addSubview:content];
    [content.topAnchor constraintEqualToAnchor:self.topAnchor constant:0].active = YES;
    [content.leadingAnchor constraintEqualToAnchor:self.leadingAnchor constant:0].active = YES;
    _ceiling = [content.heightAnchor constraintLessThanOrEqualToConstant:highestContent(self)];
    _ceiling.priority = ceilingPriority;
    _ceiling.active = YES;
    holdWeakly([content.bottomAnchor constraintEqualToAnchor:self.bottomAnchor constant:0]);
    holdWeakly([content.trailingAnchor constraintEqualToAnchor:self.trailingAnchor constant:0]);
}

- (NSSize)fit {
    _ceiling.constant = highestContent(self);
    const auto labels = _renderer->wrappingLabels();
    for (NSTextField* label : labels) {
        label.preferredMaxLayoutWidth = widestLine;
    }
    // It measures the width first, and then the height at that width.
    const NSSize oneLine = _content.fittingSize;
    NSLayoutConstraint* width = [_content.widthAnchor constraintEqualToConstant:oneLine.width];
    width.active = YES;
    [self layoutSubtreeIfNeeded];
    for (NSTextField* label : labels) {
        label.preferredMaxLayoutWidth = [label alignmentRectForFrame:label.frame].size.width;
    }
    const NSSize size = _content.fittingSize;
    width.active = NO;
    return {.width = std::max(size.width, 1.0), .height = std::max(size.height, 1.0)};
}

- (std::vector<velko::RenderingCheck::DrawnView>)drawn {
    std::vector<velko::RenderingCheck::DrawnView> views;
    addDrawn(self, views);
    return views;
}

- (BOOL)pressKeyOf:(NSEvent*)event {
    const auto tree = _tree;
    const auto shortcut = velko::shortcutOf(event);
    NSResponder* responder = self.window.firstResponder;
    if (!tree || !shortcut || (velko::isForControls(*shortcut) && velko::usesKeys(responder))) {
        return NO;
    }
    if (shortcut->key == velko::view::Shortcut::Key::enter && velko::activatesByEnter(responder)) {
        return NO;
    }
    return velko::view::pressKey(*tree, *shortcut, event.ARepeat);
}

- (BOOL)recordKeysOf:(NSEvent*)event {
    const auto tree = _tree;
    const auto recorder = tree ? velko::view::recorderIn(*tree) : std::nullopt;
    if (!recorder) {
        return NO;
    }
    return event.ARepeat || velko::view::perform(*tree, *recorder, velko::combinationOf(event));
}

- (BOOL)pressFieldKeyOf:(NSEvent*)event {
    const auto tree = _tree;
    VLKSearchField* field = velko::fieldOf(self.window.firstResponder);
    const auto pressed = velko::keyPressOf(event);
    if (!tree || field == nil || field.isComposing || !pressed) {
        return NO;
    }
    return velko::view::perform(*tree, velko::portable(field.identifier), *pressed);
}

- (BOOL)focusFieldOrAny:(BOOL)orAny {
    const auto tree = _tree;
    const auto found = tree ? velko::view::fieldIn(*tree, orAny) : std::nullopt;
    NSView* field = found ? viewNamed(self, velko::native(*found)) : nil;
    return field != nil && [self.window makeFirstResponder:field];
}

- (BOOL)walkTilesByKeyOf:(NSEvent*)event {
    const auto tree = _tree;
    const auto arrow = velko::arrowOf(event);
    NSResponder* responder = self.window.firstResponder;
    const bool leavesField = arrow == velko::view::Arrow::down && velko::fieldOf(responder) != nil;
    if (!tree || !arrow || (velko::usesKeys(responder) && !leavesField)) {
        return NO;
    }
    NSString* from =
        [responder isKindOfClass:[VLKTileView class]] ? ((VLKTileView*)responder).identifier : @"";
    const auto to = velko::view::tileBeside(*tree, velko::portable(from), *arrow);
    NSView* tile = to ? viewNamed(self, velko::native(*to)) : nil;
    return tile != nil && [self.window makeFirstResponder:tile];
}

- (BOOL)pressMenuKeyOf:(NSEvent*)event {
    NSResponder* responder = self.window.firstResponder;
    const auto key = velko::menuKeyOf(event);
    if (!key || ![responder isKindOfClass:[VLKTileView class]]) {
        return NO;
    }
    return event.ARepeat || [self perform:velko::view::MenuKey{.key = *key} on:(NSView*)responder];
}

/// A control changes its look when the user works it. This draws the tree again afterwards, so that the
/// control shows what holds, also when nothing came of what the user did.
- (void)correctLater {
    __weak VLKTreeView* weakSelf = self;
    _correction = _mainThread->after(velko::MainThread::Uptime::zero(), [weakSelf] { [weakSelf render]; });
}

- (BOOL)perform:(const velko::view::Input&)input on:(NSView*)view {
    return [self perform:input onNode:velko::portable(view.identifier)];
}

- (BOOL)perform:(const velko::view::Input&)input onNode:(const std::string&)identifier {
    const auto tree = _tree;
    const BOOL isDone = tree && velko::view::perform(*tree, identifier, input);
    [self correctLater];
    return isDone;
}

- (void)fill:(NSMenu*)menu of:(NSView*)view {
    [self fill:menu of:view about:@""];
}

- (void)fill:(NSMenu*)menu of:(NSView*)view about:(NSString*)row {
    const auto tree = _tree;
    velko::fillMenu(menu,
                    tree ? velko::view::menuOf(*tree, velko::portable(view.identifier), velko::portable(row))
                         : velko::view::Menu(),
                    *_icons);
}

- (void)menuWillOpen:(NSMenu*)menu {
    ++_openMenus;
}

- (void)menuDidClose:(NSMenu*)menu {
    --_openMenus;
}

- (void)dragging:(BOOL)isUnderWay {
    _isDragging = isUnderWay;
}

- (BOOL)isInHand {
    return _openMenus > 0 || _isDragging;
}

- (void)pressed:(NSView*)sender {
    [self perform:std::monostate {} on:sender];
}

- (void)toggled:(NSButton*)sender {
    [self perform:sender.state == NSControlStateValueOn on:sender];
}

- (void)switched:(NSSwitch*)sender {
    [self perform:sender.state == NSControlStateValueOn on:sender];
}

- (void)disclosed:(NSButton*)sender {
    const auto tree = _tree;
    const auto* node = tree ? velko::view::find(*tree, velko::portable(sender.identifier)) : nullptr;
    const auto* disclosure = node == nullptr ? nullptr : std::get_if<velko::view::Disclosure>(&node->content);
    if (disclosure != nullptr) {
        [self perform:!disclosure->isOpen on:sender];
    }
}

- (void)searched:(NSSearchField*)sender {
    [self perform:velko::portable(sender.stringValue) on:sender];
}

- (void)picked:(NSPopUpButton*)sender {
    [self perform:static_cast<std::int64_t>(sender.indexOfSelectedItem) on:sender];
}

- (void)segmentPicked:(NSSegmentedControl*)sender {
    [self perform:static_cast<std::int64_t>(sender.selectedSegment) on:sender];
}

- (void)menuAsked:(NSView*)sender {
    NSMenu* menu = [[NSMenu alloc] initWithTitle:@""];
    [self fill:menu of:sender];
    menu.delegate = self;
    const CGFloat below = sender.flipped ? sender.bounds.size.height : 0;
    [menu popUpMenuPositioningItem:nil atLocation:NSPoint{.x = 0, .y = below} inView:sender];
}

@end
