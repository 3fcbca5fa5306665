#include <cmath>

#import "Velko/mac/Images.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoEngine/mac/Conversions.h"

namespace {

constexpr CGFloat dragThreshold = 4;  // points

}  // namespace

/// A word on a capsule of the accent colour.
@interface VLKBadgeLabel : NSTextField
@end

@implementation VLKBadgeLabel

- (void)drawRect:(NSRect)dirtyRect {
    const NSRect bounds = self.bounds;
    const CGFloat radius = bounds.size.height / 2;
    [[NSColor controlAccentColor] setFill];
    [[NSBezierPath bezierPathWithRoundedRect:bounds xRadius:radius yRadius:radius] fill];
    [super drawRect:dirtyRect];
}

@end

namespace {

constexpr CGFloat tileCorner = 8;           // points
constexpr CGFloat tileUnderPointer = 0.08;  // opacity
constexpr CGFloat tilePressed = 0.16;

VLKBadgeLabel* makeBadge(NSView* tile) {
    VLKBadgeLabel* badge = [VLKBadgeLabel labelWithString:@""];
    badge.font = [NSFont systemFontOfSize:[NSFont smallSystemFontSize] - 2];
    badge.textColor = [NSColor colorWithSRGBRed:1 green:1 blue:1 alpha:1];
    badge.accessibilityElement = NO;
    badge.cell.accessibilityElement = NO;
    badge.translatesAutoresizingMaskIntoConstraints = NO;
    [tile addSubview:badge];
    [badge.topAnchor constraintEqualToAnchor:tile.topAnchor constant:0].active = YES;
    [badge.trailingAnchor constraintEqualToAnchor:tile.trailingAnchor constant:-4].active = YES;
    return badge;
}

constexpr CGFloat tileInset = 4;  // points

NSImageView* makeIcon(NSView* tile) {
    NSImageView* icon = [[NSImageView alloc] initWithFrame:NSRect{}];
    icon.accessibilityElement = NO;
    icon.cell.accessibilityElement = NO;
    icon.translatesAutoresizingMaskIntoConstraints = NO;
    [tile addSubview:icon];
    [icon.topAnchor constraintEqualToAnchor:tile.topAnchor constant:tileInset].active = YES;
    [icon.leadingAnchor constraintEqualToAnchor:tile.leadingAnchor constant:0].active = YES;
    [icon.trailingAnchor constraintEqualToAnchor:tile.trailingAnchor constant:0].active = YES;
    [icon.heightAnchor constraintEqualToConstant:velko::view::Tile::iconPoints].active = YES;
    return icon;
}

/// A button's own title has only one line.
NSTextField* makeName(NSView* tile, NSView* icon) {
    NSTextField* name = [NSTextField wrappingLabelWithString:@""];
    name.selectable = NO;
    name.font = [NSFont systemFontOfSize:[NSFont smallSystemFontSize]];
    name.alignment = NSTextAlignmentCenter;
    name.maximumNumberOfLines = 2;
    name.cell.truncatesLastVisibleLine = YES;
    name.preferredMaxLayoutWidth = velko::view::Tile::usualWidth - 2 * tileInset;
    name.accessibilityElement = NO;
    name.cell.accessibilityElement = NO;
    name.translatesAutoresizingMaskIntoConstraints = NO;
    [name setContentCompressionResistancePriority:NSLayoutPriorityDefaultLow
                                   forOrientation:NSLayoutConstraintOrientationHorizontal];
    [tile addSubview:name];
    [name.topAnchor constraintEqualToAnchor:icon.bottomAnchor constant:tileInset].active = YES;
    [name.leadingAnchor constraintEqualToAnchor:tile.leadingAnchor constant:tileInset].active = YES;
    [tile.trailingAnchor constraintEqualToAnchor:name.trailingAnchor constant:tileInset].active = YES;
    [tile.bottomAnchor constraintEqualToAnchor:name.bottomAnchor constant:tileInset].active = YES;
    return name;
}

}  // namespace

@implementation VLKTileView {
    NSImageView* _iconView;
    NSTextField* _nameLabel;
    VLKBadgeLabel* _badgeLabel;
    BOOL _isUnderPointer;
    BOOL _isPressed;
    NSPoint _pressedAt;
    BOOL _isDragged;
    // Keeps this alive while it is dragged: a new tree may not contain it any more.
    VLKTileView* _dragged;
}

- (BOOL)acceptsFirstResponder {
    return self.enabled;
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self != nil) {
        const auto options = static_cast<NSTrackingAreaOptions>(
            NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways | NSTrackingInVisibleRect);
        self.title = @"";
        self.imagePosition = NSNoImage;  // it is drawn by a view of its own, and dragged
        _iconView = makeIcon(self);
        _nameLabel = makeName(self, _iconView);
        [self addTrackingArea:[[NSTrackingArea alloc] initWithRect:self.bounds
                                                           options:options
                                                             owner:self
                                                          userInfo:nil]];
    }
    return self;
}

- (void)setImage:(NSImage*)image {
    [super setImage:image];
    _iconView.image = image;
}

- (void)setName:(NSString*)name {
    _name = [name copy];
    _nameLabel.stringValue = name;
}

- (void)setEnabled:(BOOL)enabled {
    [super setEnabled:enabled];
    _iconView.enabled = enabled;
    _nameLabel.textColor = enabled ? [NSColor labelColor] : [NSColor secondaryLabelColor];
}

/// What is within it takes no clicks.
- (NSView*)hitTest:(NSPoint)point {
    return [super hitTest:point] == nil ? nil : self;
}

- (void)setBadge:(NSString*)badge {
    if (_badgeLabel == nil && badge.length > 0) {
        _badgeLabel = makeBadge(self);
    }
    _badge = [badge copy];
    _badgeLabel.stringValue = badge;
    _badgeLabel.hidden = badge.length == 0;
}

- (void)drawRect:(NSRect)dirtyRect {
    if (self.enabled && (_isPressed || _isUnderPointer)) {
        [[[NSColor labelColor] colorWithAlphaComponent:_isPressed ? tilePressed : tileUnderPointer] setFill];
        [[NSBezierPath bezierPathWithRoundedRect:self.bounds xRadius:tileCorner yRadius:tileCorner] fill];
    }
    [super drawRect:dirtyRect];
}

- (void)showPressed:(BOOL)isPressed {
    _isPressed = isPressed;
    [self highlight:isPressed];
    self.needsDisplay = YES;
}

- (void)mouseEntered:(NSEvent*)event {
    _isUnderPointer = YES;
    self.needsDisplay = YES;
}

- (void)mouseExited:(NSEvent*)event {
    _isUnderPointer = NO;
    self.needsDisplay = YES;
}

/// Where the system lets Tab go to texts and lists only, it comes here all the same: a shelf has only tiles.
- (BOOL)canBecomeKeyView {
    return self.enabled;
}

- (void)keyDown:(NSEvent*)event {
    if ([event.charactersIgnoringModifiers isEqualToString:@"\r"]) {
        // A key that is held down presses only once.
        if (!event.ARepeat) {
            [self performClick:nil];
        }
    } else {
        [super keyDown:event];
    }
}

- (void)mouseDown:(NSEvent*)event {
    if (!self.enabled) {
        return;
    }
    _pressedAt = event.locationInWindow;
    _isDragged = NO;
    [self showPressed:YES];
}

- (void)mouseDragged:(NSEvent*)event {
    const NSPoint point = event.locationInWindow;
    if (!self.enabled || _isDragged ||
        std::hypot(point.x - _pressedAt.x, point.y - _pressedAt.y) < dragThreshold) {
        return;
    }
    _isDragged = YES;
    [self showPressed:NO];
    [self startDragging:event];
}

- (void)mouseUp:(NSEvent*)event {
    [self showPressed:NO];
    const NSPoint point = [self convertPoint:event.locationInWindow fromView:nil];
    const NSSize size = self.bounds.size;
    const BOOL isInside = point.x >= 0 && point.y >= 0 && point.x < size.width && point.y < size.height;
    if (self.enabled && !_isDragged && isInside) {
        [self performClick:nil];
    }
}

/// VoiceOver finds the menu by this property as well.
- (void)setHasMenu:(BOOL)hasMenu {
    if (hasMenu == _hasMenu) {
        return;
    }
    _hasMenu = hasMenu;
    self.menu = hasMenu ? velko::menuFilledBy(self) : nil;
}

- (void)menuNeedsUpdate:(NSMenu*)menu {
    [self.treeActions fill:menu of:self];
}

- (void)menuWillOpen:(NSMenu*)menu {
    [self.treeActions menuWillOpen:menu];
}

- (void)menuDidClose:(NSMenu*)menu {
    [self.treeActions menuDidClose:menu];
}

- (void)startDragging:(NSEvent*)event {
    NSPasteboardItem* content = [[NSPasteboardItem alloc] init];
    [content setString:self.app forType:velko::AppDragging::pasteboardType()];
    NSDraggingItem* item = [[NSDraggingItem alloc] initWithPasteboardWriter:content];
    const NSSize icon = self.image.size;
    const NSSize size = self.bounds.size;
    [item setDraggingFrame:NSRect{.origin = {.x = (size.width - icon.width) / 2, .y = 0}, .size = icon}
                  contents:self.image];
    NSMutableArray<NSDraggingItem*>* items = [NSMutableArray arrayWithCapacity:1];
    [items addObject:item];
    [self beginDraggingSessionWithItems:items event:event source:self];
}

- (NSDragOperation)draggingSession:(NSDraggingSession*)session
    sourceOperationMaskForDraggingContext:(NSDraggingContext)context {
    return context == NSDraggingContextWithinApplication ? NSDragOperationMove : NSDragOperationNone;
}

- (void)draggingSession:(NSDraggingSession*)session willBeginAtPoint:(NSPoint)point {
    _dragged = self;
    [self.treeActions dragging:YES];
}

- (void)draggingSession:(NSDraggingSession*)session
           endedAtPoint:(NSPoint)point
              operation:(NSDragOperation)operation {
    _dragged = nil;
    [self.treeActions dragging:NO];
}

@end
