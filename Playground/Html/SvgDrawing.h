#pragma once

#include <string>
#include <string_view>

#include "Velko/View/Drawing.h"

namespace velko::playground {

/// The CSS class of an ink, as "ink-label". Whoever shows a drawing gives each class its `color`.
[[nodiscard]] std::string_view inkClass(view::Ink ink) noexcept;

/// A drawing as an SVG element, `scale` pixels to the point. It inherits everything but its size; without
/// rules for the inks it is all in the colour of the text around it.
[[nodiscard]] std::string svg(const view::Drawing& drawing, double scale = 1);

/// Only what stands inside that element, to be placed in a larger picture.
[[nodiscard]] std::string svgShapes(const view::Drawing& drawing);

}  // namespace velko::playground
