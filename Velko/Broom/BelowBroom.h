#pragma once

#include <optional>
#include <vector>

#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Geometry.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

/// Where a panel hangs: `gap` points below the menu bar of the display that holds the broom, in the middle
/// below the broom; while nobody knows where the broom is, at the right end of the primary display's bar. The
/// broom's frame has its origin at the top left of the primary display, which comes first. Nothing without
/// a display.
[[nodiscard]] std::optional<Surface::Place> placeBelowBroom(const std::optional<Rect>& broom,
                                                            const std::vector<Display>& displays,
                                                            double statusBarThickness, double gap);

}  // namespace velko
