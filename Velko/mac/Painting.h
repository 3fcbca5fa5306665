#pragma once

#import <AppKit/AppKit.h>

#include "Velko/View/Drawing.h"

/// Drawings and colours, as this Mac paints them. Main thread.
namespace velko::Painting {

/// Fitting light and dark alike.
[[nodiscard]] NSColor* color(view::Ink ink);

/// Paints into the current context, whose y must grow downwards.
void paint(const view::Drawing& drawing);

/// An image of which only the opacity matters.
[[nodiscard]] NSImage* templateImage(const view::Drawing& drawing);

}  // namespace velko::Painting
