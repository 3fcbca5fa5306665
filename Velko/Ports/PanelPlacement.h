#pragma once

#include <algorithm>

#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Geometry.h"

namespace velko {

// How panels look at their edges, in points.
inline constexpr double panelCorner = 14;
inline constexpr double panelArrowWidth = 22;
inline constexpr double panelArrowHeight = 10;

/// The frame of a panel of that size: its top edge at its anchor's lower one, its middle below the anchor's
/// or as far beside it as the place says, moved as little as its bounds ask. Origin at the bottom left of the
/// primary screen.
[[nodiscard]] constexpr Rect panelFrame(const Surface::Place& place, Size size) noexcept {
    const double wanted = place.anchor.x + (place.anchor.width - size.width) / 2 + place.shift;
    const double rightmost = std::max(place.bounds.x, place.bounds.maxX() - size.width);
    return {.x = std::clamp(wanted, place.bounds.x, rightmost),
            .y = std::max(place.anchor.y - size.height, place.bounds.y),
            .width = size.width,
            .height = size.height};
}

/// How far to either side of a panel's middle its arrow can point.
[[nodiscard]] constexpr double panelArrowReach(double width) noexcept {
    return std::max(0.0, width / 2 - panelCorner - panelArrowWidth / 2);
}

/// Where the tip of a panel's arrow is, from the panel's left edge: below the middle of its anchor, where it
/// reaches that.
[[nodiscard]] constexpr double panelArrowTip(const Surface::Place& place, const Rect& frame) noexcept {
    const double middle = frame.width / 2;
    const double reach = panelArrowReach(frame.width);
    const double target = place.anchor.x + place.anchor.width / 2 - frame.x;
    return std::clamp(target, middle - reach, middle + reach);
}

/// The frame of a panel on its way out from under the menu bar: its top edge stays where it is at rest, so
/// that nothing lies over the bar. `position` goes from 0 to 1 and may swing past that. Origin at the bottom
/// left.
[[nodiscard]] constexpr Rect panelSlidOut(const Rect& atRest, double position) noexcept {
    constexpr double slide = 24;  // points
    const double missing = std::min(slide * (1 - position), atRest.height / 2);
    return {.x = atRest.x, .y = atRest.y + missing, .width = atRest.width, .height = atRest.height - missing};
}

}  // namespace velko
