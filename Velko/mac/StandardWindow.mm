#import "Velko/mac/StandardWindow.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>
#include <variant>

#include "Velko/View/Tree.h"
#import "Velko/mac/PageToolbar.h"
#include "VelkoEngine/mac/Conversions.h"

/// Passes on what the system asks and tells about a window.
@interface VLKSurfaceDelegate : NSObject <NSWindowDelegate>
/// `mayClose` is called when the user wants to close the window, and says whether the system closes it.
/// `closed` is called when the system has closed it.
/// `resized` is called when the user has resized it.
- (instancetype)initWithMayClose:(std::function<bool()>)mayClose
                          closed:(std::function<void()>)closed
                         resized:(std::function<void()>)resized;
/// Passes nothing on any more.
- (void)stop;
@end

@implementation VLKSurfaceDelegate {
    std::function<bool()> _mayClose;
    std::function<void()> _closed;
    std::function<void()> _resized;
}

- (instancetype)initWithMayClose:(std::function<bool()>)mayClose
                          closed:(std::function<void()>)closed
                         resized:(std::function<void()>)resized {
    self = [super init];
    if (self != nil) {
        _mayClose = std::move(mayClose);
        _closed = std::move(closed);
        _resized = std::move(resized);
    }
    return self;
}

- (void)stop {
    _mayClose = nullptr;
    _closed = nullptr;
    _resized = nullptr;
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

- (void)windowDidEndLiveResize:(NSNotification*)notification {
    const auto resized = _resized;
    if (resized) {
        resized();
    }
}

@end

namespace velko {

namespace {

/// Higher than every screen.
constexpr CGFloat noLimit = 10'000;

bool hasGrowingList(const view::Node& content) {
    bool isFound = false;
    view::walk(content, [&](const view::Node& node) {
        const auto* list = std::get_if<view::List>(&node.content);
        isFound = isFound || (list != nullptr && list->grows);
    });
    return isFound;
}

}  // namespace

bool StandardWindow::present(const Opening& opening, VLKTreeView* tree) {
    window_ =
        [[NSWindow alloc] initWithContentRect:tree.frame
                                    styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                              NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable
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
        closed:[this] { close(); }
        resized:[this] { userResized(); }];
    window_.delegate = delegate_;
    follow(opening.content);
    resize(tree.frame.size);
    goToLastPlace();
    raise();
    return true;
}

void StandardWindow::raise() {
    [[NSApplication sharedApplication] activate];
    // The system may refuse to activate the program, for instance when a timer opens the window and no click.
    [window_ orderFrontRegardless];
    [window_ makeKeyAndOrderFront:nil];
}

void StandardWindow::follow(const view::Node& content) {
    canGrow_ = hasGrowingList(content);
    const view::Node* node = view::toolbarOf(content);
    const auto* pages = node == nullptr ? nullptr : std::get_if<view::Pages>(&node->content);
    if (pages == nullptr) {
        return;
    }
    if (pages_ == nil || ![pages_ has:pages->tabs]) {
        pages_ = [[VLKPageToolbar alloc] initWithWindow:window_
                                                   tabs:pages->tabs
                                                 chosen:[this, id = node->id](std::size_t page) {
                                                     [tree() perform:static_cast<std::int64_t>(page)
                                                              onNode:id];
                                                 }];
    }
    [pages_ select:pages->selected];
    window_.title = native(view::pageTitle(content));
}

void StandardWindow::resize(NSSize size) {
    wanted_ = size;
    setHeight(canGrow_ ? std::max(size.height, chosenHeight_) : size.height);
}

void StandardWindow::setHeight(CGFloat height) {
    // Its top edge stays where it is.
    const NSRect before = window_.frame;
    window_.contentMinSize = wanted_;
    window_.contentMaxSize = NSSize{.width = wanted_.width, .height = canGrow_ ? noLimit : wanted_.height};
    [window_ setContentSize:NSSize{.width = wanted_.width, .height = height}];
    // Unless its bottom would leave the screen.
    const CGFloat lowest = window_.screen == nil ? -noLimit : window_.screen.visibleFrame.origin.y;
    const CGFloat top = std::max(before.origin.y + before.size.height, lowest + window_.frame.size.height);
    [window_ setFrameTopLeftPoint:NSPoint{.x = before.origin.x, .y = top}];
}

void StandardWindow::goToLastPlace() {
    NSString* name = traits_.remembersPlace ? native(traits_.name) : nil;
    if (name != nil && [window_ setFrameUsingName:name]) {
        chosenHeight_ = canGrow_ ? tree().frame.size.height : 0;
        resize(wanted_);
    } else {
        [window_ center];
    }
    if (name != nil) {
        [window_ setFrameAutosaveName:name];
    }
}

void StandardWindow::userResized() {
    chosenHeight_ = tree().frame.size.height;
}

void StandardWindow::dismantle() {
    [delegate_ stop];
    window_.delegate = nil;
    delegate_ = nil;
    pages_ = nil;
    [window_ setFrameAutosaveName:@""];  // the next window needs it
    NSWindow* window = std::exchange(window_, nil);
    [window orderOut:nil];
    // The user may have closed it with its close button, and that button's action has not returned yet.
    mainThread().post([window]() mutable { window = nil; });
}

}  // namespace velko
