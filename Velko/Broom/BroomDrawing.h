#pragma once

#include "Velko/View/Drawing.h"

/// Velko's broom. Pure functions.
namespace velko::BroomDrawing {

struct Pose {
    double tilt = 0;  ///< degrees that it leans more than it does at rest; clockwise
    bool hasDot = false;
};

/// The broom of the menu bar, 18 points square and all in one ink. With the dot there is something left to
/// sweep: a speck on the floor beside it.
[[nodiscard]] view::Drawing icon(const Pose& pose);

/// The broom in its colours, `points` wide and high.
[[nodiscard]] view::Drawing coloured(double points);

}  // namespace velko::BroomDrawing
