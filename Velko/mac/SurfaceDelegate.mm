#import "Velko/mac/SurfaceDelegate.h"

#include <utility>

@implementation VLKSurfaceDelegate {
    std::function<bool()> _mayClose;
    std::function<void()> _closed;
}

- (instancetype)initWithMayClose:(std::function<bool()>)mayClose closed:(std::function<void()>)closed {
    self = [super init];
    if (self != nil) {
        _mayClose = std::move(mayClose);
        _closed = std::move(closed);
    }
    return self;
}

- (void)forget {
    _mayClose = nullptr;
    _closed = nullptr;
}

- (BOOL)mayClose {
    const auto mayClose = _mayClose;
    return !mayClose || mayClose();
}

- (void)didClose {
    const auto closed = _closed;
    if (closed) {
        closed();
    }
}

- (BOOL)popoverShouldClose:(NSPopover*)popover {
    return [self mayClose];
}

- (void)popoverDidClose:(NSNotification*)notification {
    [self didClose];
}

- (BOOL)windowShouldClose:(NSWindow*)sender {
    return [self mayClose];
}

- (void)windowWillClose:(NSNotification*)notification {
    [self didClose];
}

@end
