#import "Velko/mac/TreeViews.h"

#include <cmath>

#import "Velko/mac/Images.h"
#include "VelkoEngine/mac/Conversions.h"

@implementation VLKSpacerView

- (NSSize)intrinsicContentSize {
    return {.width = 0, .height = 0};
}

@end

@implementation VLKDocumentView

- (BOOL)isFlipped {
    return YES;
}

@end

@implementation VLKPictureView

- (void)setDrawing:(velko::view::Drawing)drawing {
    if (drawing == _drawing) {
        return;
    }
    if (drawing.size != _drawing.size) {
        [self invalidateIntrinsicContentSize];
    }
    _drawing = std::move(drawing);
    self.needsDisplay = YES;
}

- (NSSize)intrinsicContentSize {
    return {.width = _drawing.size.width, .height = _drawing.size.height};
}

- (BOOL)isFlipped {
    return YES;
}

- (void)drawRect:(NSRect)dirtyRect {
    velko::Painting::paint(_drawing);
}

@end

@implementation VLKTreeButton

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    return YES;
}

@end

namespace {

constexpr CGFloat dragThreshold = 4;  // points

}  // namespace

@implementation VLKTileView {
    NSPoint _pressedAt;
    BOOL _isDragged;
    // Keeps this alive while it is dragged: a new tree may not contain it any more.
    VLKTileView* _dragged;
}

- (BOOL)acceptsFirstResponder {
    return self.enabled;
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
    [self highlight:YES];
}

- (void)mouseDragged:(NSEvent*)event {
    const NSPoint point = event.locationInWindow;
    if (!self.enabled || _isDragged ||
        std::hypot(point.x - _pressedAt.x, point.y - _pressedAt.y) < dragThreshold) {
        return;
    }
    _isDragged = YES;
    [self highlight:NO];
    [self startDragging:event];
}

- (void)mouseUp:(NSEvent*)event {
    [self highlight:NO];
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
    NSMenu* menu = hasMenu ? [[NSMenu alloc] initWithTitle:@""] : nil;
    menu.delegate = self;
    self.menu = menu;
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

@implementation VLKGroupView {
    NSBox* _border;
    BOOL _isTarget;
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self != nil) {
        _border = [[NSBox alloc] initWithFrame:self.bounds];
        _border.titlePosition = NSNoTitle;
        _border.accessibilityElement = NO;
        _border.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
        [self addSubview:_border];
    }
    return self;
}

- (void)setTakesApps:(BOOL)takesApps {
    if (takesApps == _takesApps) {
        return;
    }
    _takesApps = takesApps;
    if (takesApps) {
        NSMutableArray<NSPasteboardType>* types = [NSMutableArray arrayWithCapacity:1];
        [types addObject:velko::AppDragging::pasteboardType()];
        [self registerForDraggedTypes:types];
    } else {
        [self unregisterDraggedTypes];
    }
}

- (void)showTarget:(BOOL)isTarget {
    _isTarget = isTarget;
    _border.boxType = isTarget ? NSBoxCustom : NSBoxPrimary;
    if (isTarget) {
        _border.borderColor = [NSColor controlAccentColor];
        _border.borderWidth = 2;
        _border.cornerRadius = 6;
    }
}

- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)sender {
    [self showTarget:self.takesApps];
    return _isTarget ? NSDragOperationMove : NSDragOperationNone;
}

- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)sender {
    return _isTarget ? NSDragOperationMove : NSDragOperationNone;
}

- (void)draggingExited:(id<NSDraggingInfo>)sender {
    [self showTarget:NO];
}

- (BOOL)performDragOperation:(id<NSDraggingInfo>)sender {
    [self showTarget:NO];
    NSString* app = [sender.draggingPasteboard stringForType:velko::AppDragging::pasteboardType()];
    return app != nil && [self.treeActions perform:velko::view::Input(velko::portable(app)) on:self];
}

@end
