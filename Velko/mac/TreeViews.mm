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
