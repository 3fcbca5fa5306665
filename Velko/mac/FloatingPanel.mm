#import "Velko/mac/FloatingPanel.h"

#include <functional>
#include <utility>

#include "Velko/Ports/PanelPlacement.h"
#import "Velko/mac/PanelShape.h"
#include "VelkoEngine/mac/Conversions.h"

/// A borderless panel that can have the keyboard, or cannot.
@interface VLKSurfacePanel : NSPanel
@property(nonatomic) BOOL takesKeyboard;
@property(nonatomic) std::function<void()> cancelled;
@property(nonatomic, strong) NSVisualEffectView* background;
@end

@implementation VLKSurfacePanel

- (BOOL)canBecomeKeyWindow {
    return self.takesKeyboard;
}

- (BOOL)canBecomeMainWindow {
    return NO;
}

/// Escape, or Command and the full stop.
- (void)cancelOperation:(id)sender {
    const auto cancelled = self.cancelled;
    if (cancelled) {
        cancelled();
    }
}

@end

namespace velko {

namespace {

VLKSurfacePanel* makePanel(VLKTreeView* tree) {
    VLKSurfacePanel* panel = [[VLKSurfacePanel alloc]
        initWithContentRect:tree.frame
                  styleMask:NSWindowStyleMaskBorderless | NSWindowStyleMaskNonactivatingPanel
                    backing:NSBackingStoreBuffered
                      defer:NO];
    panel.releasedWhenClosed = NO;
    panel.restorable = NO;
    panel.opaque = NO;
    panel.backgroundColor = [NSColor clearColor];
    panel.hasShadow = YES;
    panel.hidesOnDeactivate = NO;
    panel.animationBehavior = NSWindowAnimationBehaviorNone;
    panel.collectionBehavior = NSWindowCollectionBehaviorCanJoinAllSpaces |
                               NSWindowCollectionBehaviorFullScreenAuxiliary |
                               NSWindowCollectionBehaviorIgnoresCycle;
    panel.background = PanelShape::background(tree.frame);
    // At the lower edge whatever the panel's height: while it slides out, and below an arrow.
    tree.autoresizingMask = NSViewWidthSizable | NSViewMaxYMargin;
    [panel.background addSubview:tree];
    panel.contentView = panel.background;
    panel.autorecalculatesKeyViewLoop = YES;
    // The pointer over it is of interest, and nobody else hears of it.
    panel.acceptsMouseMovedEvents = YES;
    return panel;
}

}  // namespace

bool FloatingPanel::present(const Opening& opening, VLKTreeView* tree) {
    place_ = opening.place;
    content_ = tree;
    panel_ = makePanel(tree);
    panel_.title = native(opening.title);
    panel_.accessibilityTitle = native(opening.title);
    panel_.takesKeyboard = isTransient();
    panel_.cancelled = [this] { askToGo(Dismissal::escape); };
    // Above the menu bar and below the menus.
    panel_.level = isTransient() ? NSStatusWindowLevel : NSFloatingWindowLevel;
    if (!place_) {
        [panel_ center];
    }
    motion_.emplace(mainThread(), opening.motion, panel_, target());
    moveToTarget();
    [panel_ orderFrontRegardless];
    if (isTransient()) {
        if (opening.takesKeyboard) {
            [panel_ makeKeyWindow];
        }
        watchClicksOutside();
    }
    return true;
}

NSRect FloatingPanel::target() const {
    NSSize size = content_.frame.size;
    size.height += hasArrow() ? panelArrowHeight : 0;
    if (place_) {
        return native(panelFrame(*place_, portable(size)));
    }
    // Where it is, its top edge where it was.
    const NSRect before = panel_.frame;
    return {.origin = {.x = before.origin.x, .y = before.origin.y + before.size.height - size.height},
            .size = size};
}

void FloatingPanel::moveToTarget() {
    const NSRect frame = target();
    pointArrow(frame);
    motion_->setTarget(frame);
    [panel_ invalidateShadow];
}

void FloatingPanel::pointArrow(NSRect frame) {
    if (hasArrow() && place_) {
        PanelShape::setArrow(panel_.background, frame.size, panelArrowTip(*place_, portable(frame)));
    }
}

void FloatingPanel::resize(NSSize size) {
    [content_ setFrameSize:size];
    moveToTarget();
}

void FloatingPanel::move(const Place& place) {
    if (panel_ != nil) {
        place_ = place;
        moveToTarget();
    }
}

void FloatingPanel::dismantle() {
    motion_.reset();
    content_ = nil;
    VLKSurfacePanel* panel = std::exchange(panel_, nil);
    panel.cancelled = nullptr;
    [panel orderOut:nil];
    // The user may have closed it with one of its buttons, which is not through with that yet.
    mainThread().post([panel]() mutable { panel = nil; });
}

NSWindow* FloatingPanel::window() const {
    return panel_;
}

}  // namespace velko
