#import "Velko/mac/PanelShape.h"

#include "Velko/Ports/PanelPlacement.h"

namespace velko::PanelShape {

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

}  // namespace

NSVisualEffectView* background(NSRect frame) {
    NSVisualEffectView* effect = [[NSVisualEffectView alloc] initWithFrame:frame];
    effect.material = NSVisualEffectMaterialPopover;
    effect.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    effect.state = NSVisualEffectStateActive;
    effect.maskImage = stretchableMask();
    return effect;
}

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

}  // namespace velko::PanelShape
