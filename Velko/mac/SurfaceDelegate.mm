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

- (BOOL)windowShouldClose:(NSWindow*)sender {
    const auto mayClose = _mayClose;
    return !mayClose || mayClose();
}

- (void)windowWillClose:(NSNotification*)notification {
    const auto closed = _closed;
    if (closed) {
        closed();
    }
}

@end
