#pragma once

#import <AppKit/AppKit.h>

/// What lies behind the content of a panel: the system's material, in a shape. Main thread.
namespace velko::PanelShape {

/// Rounded at its corners, whatever its size.
[[nodiscard]] NSVisualEffectView* background(NSRect frame);

/// Gives it an arrow at its top whose tip is so far from its left edge. For that size only.
void setArrow(NSVisualEffectView* background, NSSize size, double tip);

}  // namespace velko::PanelShape
