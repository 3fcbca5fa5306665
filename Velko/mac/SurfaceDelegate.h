#pragma once

#import <AppKit/AppKit.h>

#include <functional>

/// Passes on what the system asks and tells about a window.
@interface VLKSurfaceDelegate : NSObject <NSWindowDelegate>
/// `mayClose`: the user wants it gone; whether the system closes it. `closed`: the system has closed it.
- (instancetype)initWithMayClose:(std::function<bool()>)mayClose closed:(std::function<void()>)closed;
/// Nothing is passed on any more.
- (void)forget;
@end
