#pragma once

#include <optional>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoEngine/Ports/Screen.h"

/// Where the menu bars lie on screens in any arrangement. Pure functions; a display is as `Displays` gives
/// it, the primary one first.
namespace velko::MenuBarStrip {

/// The first screen that holds a point (origin at the bottom left, y grows upwards); null when none does. A
/// point on a screen's top edge is on that screen and not on one above it: a pointer that is moved up fast
/// stops there.
[[nodiscard]] const Display* displayUnder(const std::vector<Display>& displays, Point point);

/// How far a screen's menu bar reaches down from its top edge.
[[nodiscard]] double height(const Display& display, double statusBarThickness);

/// The camera housing: what lies between the two usable areas beside it. Nothing without one.
[[nodiscard]] std::optional<Rect> housing(const Display& display);

/// Whether a screen has a camera housing, by either of the two signs that the system gives of one.
[[nodiscard]] bool isNotched(const Display& display);

/// Whether something with that frame (origin at the top left of the primary screen, y grows downwards) stands
/// in a menu bar, where a person can see it: both its ends are on one screen, and its middle lies in the bar
/// and not under a camera housing. Something without a size is nowhere.
[[nodiscard]] bool shows(const std::vector<Display>& displays, double statusBarThickness, const Rect& frame);

/// Whether a point (origin at the bottom left, y grows upwards) lies in the menu bar of its screen.
[[nodiscard]] bool holds(const std::vector<Display>& displays, double statusBarThickness, Point point);

/// Whether a point (origin at the top left of the primary screen, y grows downwards) lies in the menu bar
/// of the screen that it is on.
[[nodiscard]] bool contains(const std::vector<Display>& displays, double statusBarThickness, Point point);

}  // namespace velko::MenuBarStrip
