#import "Velko/mac/NotePopover.h"

#include <chrono>
#include <utility>

namespace velko {

namespace {

constexpr std::chrono::seconds closingTime{2};

}  // namespace

bool NotePopover::present(const Opening& opening, VLKTreeView* tree) {
    NSView* button = statusItem_.button();
    // A popover that hangs from nothing would raise an exception.
    if (button.window == nil) {
        return false;
    }
    NSViewController* controller = [[NSViewController alloc] init];
    controller.view = tree;
    popover_ = [[NSPopover alloc] init];
    popover_.behavior = NSPopoverBehaviorTransient;
    popover_.animates = opening.isAnimated;
    popover_.contentViewController = controller;
    popover_.contentSize = tree.frame.size;
    delegate_ = [[VLKSurfaceDelegate alloc] initWithMayClose:[this] {
        askToGo(Dismissal::clickOutside);
        // By now it is closed already, or it stays.
        return false;
    }
        closed:[this] { close(); }];
    popover_.delegate = delegate_;
    [popover_ showRelativeToRect:button.bounds ofView:button preferredEdge:NSRectEdgeMinY];
    if (window() == nil) {
        return false;
    }
    window().autorecalculatesKeyViewLoop = YES;
    [window() makeKeyWindow];
    // A popover of a program that is not the active one does not always hear of clicks elsewhere.
    watchClicksOutside(false);
    return true;
}

void NotePopover::resize(NSSize size) {
    popover_.contentSize = size;
}

void NotePopover::dismantle() {
    [delegate_ forget];
    NSPopover* popover = std::exchange(popover_, nil);
    VLKSurfaceDelegate* delegate = std::exchange(delegate_, nil);
    [popover close];
    // It closes in its own time, and is needed until then.
    mainThread()
        .after(closingTime,
               [popover, delegate]() mutable {
                   popover = nil;
                   delegate = nil;
               })
        .detach();
}

NSWindow* NotePopover::window() const {
    return popover_.contentViewController.view.window;
}

}  // namespace velko
