#pragma once

#include <vector>

#include "VelkoCore/Geometry.h"

namespace velko::view {

/// One stroke of a pen: a line or a cubic curve to a point, or the way back to where the outline began.
struct PathCommand {
    enum class Kind { moveTo, lineTo, curveTo, close };

    Kind kind = Kind::moveTo;
    Point to{};
    Point control1{};  ///< with `curveTo`
    Point control2{};  ///< with `curveTo`

    bool operator==(const PathCommand&) const = default;
};

using Path = std::vector<PathCommand>;

/// What a shape is painted with. Each renderer has its colours for light and for dark.
enum class Ink { label, accent, warning, wood, straw, soap, sparkle };

struct Shape {
    Path path;
    Ink ink = Ink::label;
    double strokeWidth = 0;  ///< points, with round ends and corners; 0: the outline is filled
    double opacity = 1;      ///< 0 to 1

    bool operator==(const Shape&) const = default;
};

/// A picture as outlines, painted in order. Points; the origin is at the top left and y grows downwards.
struct Drawing {
    Size size{};
    std::vector<Shape> shapes{};

    bool operator==(const Drawing&) const = default;
};

}  // namespace velko::view
