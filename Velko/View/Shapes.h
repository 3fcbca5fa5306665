#pragma once

#include "Velko/View/Drawing.h"

/// Outlines that several drawings share. Pure functions.
namespace velko::view {

[[nodiscard]] Path circle(Point centre, double radius);

}  // namespace velko::view
