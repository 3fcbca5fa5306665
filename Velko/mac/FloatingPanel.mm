#import "Velko/mac/FloatingPanel.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

constexpr std::chrono::milliseconds frameTime{16};

}  // namespace

PanelMotion::PanelMotion(MainThread& mainThread, const Surface::Motion& motion, NSWindow* panel,
                         NSRect target)
    : mainThread_(mainThread),
      spring_(motion.springResponse, motion.springDamping),
      fade_(std::max(motion.fade, Timing::Seconds::zero())),
      panel_(panel),
      target_(target),
      start_(mainThread.now()) {
    draw(Timing::Seconds::zero());
    if (std::max(spring_.duration(), fade_) > Timing::Seconds::zero()) {
        steps_ = mainThread_.every(frameTime, [this] { step(); });
    }
}

void PanelMotion::setTarget(NSRect target) {
    target_ = target;
    step();
}

void PanelMotion::leave(std::function<void()> gone) {
    spring_ = SpringCurve(slides() ? Timing::shelfSpringResponse / 2 : Timing::Seconds::zero(), 1);
    gone_ = std::move(gone);
    start_ = mainThread_.now();
    steps_ = mainThread_.every(frameTime, [this] { step(); });
}

void PanelMotion::step() {
    const Timing::Seconds time = mainThread_.now() - start_;
    draw(time);
    if (time < std::max(spring_.duration(), fade_)) {
        return;
    }
    steps_ = Task();
    if (const auto gone = std::exchange(gone_, nullptr)) {
        gone();  // it destroys this
    }
}

void PanelMotion::draw(Timing::Seconds time) {
    const double way = spring_.at(time);
    const double shown =
        fade_ > Timing::Seconds::zero() ? std::min(time / fade_, 1.0) : std::clamp(way, 0.0, 1.0);
    const bool leaves = gone_ != nullptr;
    const double position = !leaves ? way : slides() ? 1 - way : 1;
    [panel_ setFrame:native(panelSlidOut(portable(target_), position)) display:YES];
    panel_.alphaValue = leaves ? 1 - shown : shown;
}

}  // namespace velko

namespace velko {

namespace {

NSBezierPath* rounded(NSRect rect) {
    return [NSBezierPath bezierPathWithRoundedRect:rect xRadius:panelCorner yRadius:panelCorner];
}

NSImage* stretchableMask() {
    constexpr double side = 2 * panelCorner + 1;
    NSImage* mask = [NSImage imageWithSize:NSSize{.width = side, .height = side}
                                   flipped:NO
                            drawingHandler:^BOOL(NSRect rect) {
                              [[NSColor blackColor] setFill];
                              [rounded(rect) fill];
                              return YES;
                            }];
    mask.capInsets = {.top = panelCorner, .left = panelCorner, .bottom = panelCorner, .right = panelCorner};
    mask.resizingMode = NSImageResizingModeStretch;
    return mask;
}

NSBezierPath* arrow(NSSize size, double tip) {
    const double base = size.height - panelArrowHeight;
    NSBezierPath* path = [NSBezierPath bezierPath];
    [path moveToPoint:NSPoint{.x = tip - panelArrowWidth / 2, .y = base}];
    [path lineToPoint:NSPoint{.x = tip, .y = size.height}];
    [path lineToPoint:NSPoint{.x = tip + panelArrowWidth / 2, .y = base}];
    [path closePath];
    return path;
}

/// What lies behind the content of a panel: the system's material, rounded at the corners at every size.
NSVisualEffectView* makeBackground(NSRect frame) {
    NSVisualEffectView* effect = [[NSVisualEffectView alloc] initWithFrame:frame];
    effect.material = NSVisualEffectMaterialPopover;
    effect.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    effect.state = NSVisualEffectStateActive;
    effect.maskImage = stretchableMask();
    return effect;
}

/// Gives it an arrow at its top, whose tip is `tip` points from its left edge, for that size only.
void setArrow(NSVisualEffectView* background, NSSize size, double tip) {
    background.maskImage = [NSImage imageWithSize:size
                                          flipped:NO
                                   drawingHandler:^BOOL(NSRect rect) {
                                     [[NSColor blackColor] setFill];
                                     rect.size.height -= panelArrowHeight;
                                     [rounded(rect) fill];
                                     [arrow(size, tip) fill];
                                     return YES;
                                   }];
}

}  // namespace

}  // namespace velko

/// A panel without a border, which can have the keyboard or not.
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
    panel.background = makeBackground(tree.frame);
    // At the lower edge at every height of the panel: while it slides out, and below an arrow.
    tree.autoresizingMask = NSViewWidthSizable | NSViewMaxYMargin;
    [panel.background addSubview:tree];
    panel.contentView = panel.background;
    panel.autorecalculatesKeyViewLoop = YES;
    // Velko wants to know of the pointer over it, and no event monitor hears of that.
    panel.acceptsMouseMovedEvents = YES;
    return panel;
}

}  // namespace

bool FloatingPanel::present(const Opening& opening, VLKTreeView* tree) {
    takeAway();
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
    // It stays where it is, and so does its top edge.
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
        setArrow(panel_.background, frame.size, panelArrowTip(*place_, portable(frame)));
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
    content_ = nil;
    VLKSurfacePanel* panel = std::exchange(panel_, nil);
    panel.cancelled = nullptr;
    panel.takesKeyboard = NO;
    panel.ignoresMouseEvents = YES;
    [panel orderOut:nil];  // so it gives up the keyboard at once
    // The user may have closed it with one of its buttons, and that button's action has not returned yet.
    mainThread().post([panel]() mutable { panel = nil; });
    if (motion_ && motion_->moves()) {
        leaving_ = panel;
        [panel orderFrontRegardless];
        motion_->leave([this] { takeAway(); });
    } else {
        motion_.reset();
    }
}

/// Ends the way of a panel that leaves.
void FloatingPanel::takeAway() {
    motion_.reset();
    [std::exchange(leaving_, nil) orderOut:nil];
}

NSWindow* FloatingPanel::window() const {
    return panel_;
}

}  // namespace velko
