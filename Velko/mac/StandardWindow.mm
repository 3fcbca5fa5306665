#import "Velko/mac/StandardWindow.h"

#include <functional>
#include <utility>

#include "VelkoEngine/mac/Conversions.h"

/// Passes on what the system asks and tells about a window.
@interface VLKSurfaceDelegate : NSObject <NSWindowDelegate>
/// `mayClose` is called when the user wants to close the window, and says whether the system closes it.
/// `closed` is called when the system has closed it.
- (instancetype)initWithMayClose:(std::function<bool()>)mayClose closed:(std::function<void()>)closed;
/// Passes nothing on any more.
- (void)stop;
@end

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

- (void)stop {
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

namespace velko {

bool StandardWindow::present(const Opening& opening, VLKTreeView* tree) {
    window_ = [[NSWindow alloc] initWithContentRect:tree.frame
                                          styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                                    NSWindowStyleMaskMiniaturizable
                                            backing:NSBackingStoreBuffered
                                              defer:NO];
    // This object owns the window.
    window_.releasedWhenClosed = NO;
    window_.restorable = NO;
    window_.tabbingMode = NSWindowTabbingModeDisallowed;
    window_.title = native(opening.title);
    window_.contentView = tree;
    window_.autorecalculatesKeyViewLoop = YES;
    delegate_ = [[VLKSurfaceDelegate alloc] initWithMayClose:[this] {
        askToGo(Dismissal::closeButton);
        // By now it is closed, or it stays open.
        return false;
    }
        closed:[this] { close(); }];
    window_.delegate = delegate_;
    [window_ center];
    raise();
    return true;
}

void StandardWindow::raise() {
    [[NSApplication sharedApplication] activate];
    // The system may refuse to activate the program, for instance when a timer opens the window and no click.
    [window_ orderFrontRegardless];
    [window_ makeKeyAndOrderFront:nil];
}

void StandardWindow::resize(NSSize size) {
    // Its top edge stays where it is.
    const NSRect before = window_.frame;
    [window_ setContentSize:size];
    [window_ setFrameTopLeftPoint:NSPoint{.x = before.origin.x, .y = before.origin.y + before.size.height}];
}

void StandardWindow::dismantle() {
    [delegate_ stop];
    window_.delegate = nil;
    delegate_ = nil;
    NSWindow* window = std::exchange(window_, nil);
    [window orderOut:nil];
    // The user may have closed it with its close button, and that button's action has not returned yet.
    mainThread().post([window]() mutable { window = nil; });
}

}  // namespace velko
