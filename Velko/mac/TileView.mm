#include <cmath>

#import "Velko/mac/AppDragging.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoEngine/mac/Conversions.h"

namespace {

constexpr CGFloat dragThreshold = 4;  // points

}  // namespace

@implementation VLKTileView {
    NSPoint _pressedAt;
    BOOL _isDragged;
    // Holds this while it is dragged, when the tree may drop it.
    VLKTileView* _dragged;
}

- (BOOL)acceptsFirstResponder {
    return self.enabled;
}

/// Tab comes here also where the system keeps it to texts and lists: there is nothing else on a shelf.
- (BOOL)canBecomeKeyView {
    return self.enabled;
}

- (void)keyDown:(NSEvent*)event {
    if ([event.charactersIgnoringModifiers isEqualToString:@"\r"]) {
        // A key that is held down presses once.
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

/// By way of the property VoiceOver finds it as well.
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
