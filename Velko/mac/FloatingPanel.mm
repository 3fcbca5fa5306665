#import "Velko/mac/FloatingPanel.h"

#include <functional>
#include <utility>

#include "Velko/Ports/PanelPlacement.h"
#include "VelkoEngine/mac/Conversions.h"

/// A borderless panel that can have the keyboard, or cannot.
@interface VLKSurfacePanel : NSPanel
@property(nonatomic) BOOL takesKeyboard;
@property(nonatomic) std::function<void()> cancelled;
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

constexpr double corner = 14;  // points

NSRect native(const Rect& rect) {
    return {.origin = {.x = rect.x, .y = rect.y}, .size = {.width = rect.width, .height = rect.height}};
}

/// Rounds the corners of what it masks, whatever its size.
NSImage* roundedMask() {
    constexpr double side = 2 * corner + 1;
    NSImage* mask = [NSImage imageWithSize:NSSize{.width = side, .height = side}
                                   flipped:NO
                            drawingHandler:^BOOL(NSRect rect) {
                              [[NSColor blackColor] setFill];
                              [[NSBezierPath bezierPathWithRoundedRect:rect xRadius:corner
                                                               yRadius:corner] fill];
                              return YES;
                            }];
    mask.capInsets = {.top = corner, .left = corner, .bottom = corner, .right = corner};
    mask.resizingMode = NSImageResizingModeStretch;
    return mask;
}

NSView* background(VLKTreeView* tree) {
    NSVisualEffectView* effect = [[NSVisualEffectView alloc] initWithFrame:tree.frame];
    effect.material = NSVisualEffectMaterialPopover;
    effect.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    effect.state = NSVisualEffectStateActive;
    effect.maskImage = roundedMask();
    tree.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [effect addSubview:tree];
    return effect;
}

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
    panel.contentView = background(tree);
    panel.autorecalculatesKeyViewLoop = YES;
    // The pointer over it is of interest, and nobody else hears of it.
    panel.acceptsMouseMovedEvents = YES;
    return panel;
}

}  // namespace

bool FloatingPanel::present(const Opening& opening, VLKTreeView* tree) {
    place_ = opening.place;
    panel_ = makePanel(tree);
    panel_.takesKeyboard = kind_ == Kind::shelf;
    panel_.cancelled = [this] { askToGo(Dismissal::escape); };
    // Above the menu bar and below the menus.
    panel_.level = kind_ == Kind::shelf ? NSStatusWindowLevel : NSFloatingWindowLevel;
    if (!place_) {
        [panel_ center];
    }
    motion_.emplace(mainThread(), opening.motion, panel_, target(tree.frame.size));
    if (kind_ == Kind::shelf) {
        [panel_ orderFrontRegardless];
        if (opening.takesKeyboard) {
            [panel_ makeKeyWindow];
        }
        watchClicksOutside(true);
    } else {
        [panel_ orderFrontRegardless];
    }
    return true;
}

NSRect FloatingPanel::target(NSSize size) const {
    if (place_) {
        return native(panelFrame(*place_, portable(size)));
    }
    // Where it is, its top edge where it was.
    const NSRect before = panel_.frame;
    return {.origin = {.x = before.origin.x, .y = before.origin.y + before.size.height - size.height},
            .size = size};
}

void FloatingPanel::resize(NSSize size) {
    motion_->setTarget(target(size));
    [panel_ invalidateShadow];
}

void FloatingPanel::move(const Place& place) {
    if (panel_ != nil) {
        place_ = place;
        motion_->setTarget(target(panel_.frame.size));
    }
}

void FloatingPanel::dismantle() {
    motion_.reset();
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
