#import "Velko/mac/StandardWindow.h"

#include <utility>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

bool StandardWindow::present(const Opening& opening, VLKTreeView* tree) {
    window_ = [[NSWindow alloc] initWithContentRect:tree.frame
                                          styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                                    NSWindowStyleMaskMiniaturizable
                                            backing:NSBackingStoreBuffered
                                              defer:NO];
    // It belongs to this, and goes with it.
    window_.releasedWhenClosed = NO;
    window_.restorable = NO;
    window_.tabbingMode = NSWindowTabbingModeDisallowed;
    window_.title = native(opening.title);
    window_.contentView = tree;
    window_.autorecalculatesKeyViewLoop = YES;
    delegate_ = [[VLKSurfaceDelegate alloc] initWithMayClose:[this] {
        askToGo(Dismissal::closeButton);
        // By now it is closed already, or it stays.
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
    // The system may decline to activate, as when a timer and no click asked for the window.
    [window_ orderFrontRegardless];
    [window_ makeKeyAndOrderFront:nil];
}

void StandardWindow::resize(NSSize size) {
    // Its top stays where it is.
    const NSRect before = window_.frame;
    [window_ setContentSize:size];
    [window_ setFrameTopLeftPoint:NSPoint{.x = before.origin.x, .y = before.origin.y + before.size.height}];
}

void StandardWindow::dismantle() {
    [delegate_ forget];
    window_.delegate = nil;
    delegate_ = nil;
    NSWindow* window = std::exchange(window_, nil);
    [window orderOut:nil];
    // The user may have closed it by its own button, which is not through with that yet.
    mainThread().post([window]() mutable { window = nil; });
}

}  // namespace velko
