#pragma once

#include <algorithm>

#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Geometry.h"

namespace velko {

/// The frame of a panel of that size: its top edge at its anchor's lower one, its middle below the anchor's,
/// moved as little as its bounds ask. Origin at the bottom left of the primary screen.
[[nodiscard]] constexpr Rect panelFrame(const Surface::Place& place, Size size) noexcept {
    const double centred = place.anchor.x + (place.anchor.width - size.width) / 2;
    const double rightmost = std::max(place.bounds.x, place.bounds.maxX() - size.width);
    return {.x = std::clamp(centred, place.bounds.x, rightmost),
            .y = std::max(place.anchor.y - size.height, place.bounds.y),
            .width = size.width,
            .height = size.height};
}

}  // namespace velko
