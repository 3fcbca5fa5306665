#import "Velko/mac/TreeViews.h"

#include <cmath>

#import "Velko/mac/Painting.h"

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
