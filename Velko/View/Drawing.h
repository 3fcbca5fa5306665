#pragma once

#include <functional>
#include <vector>

#include "VelkoCore/Geometry.h"

namespace velko::view {

/// One stroke of a pen: a move, a line or a curve to a point, or the line back to where the outline began.
struct PathCommand {
    enum class Kind { moveTo, lineTo, curveTo, close };

    Kind kind = Kind::moveTo;
    Point to{};
    Point control1{};  ///< with `curveTo`
    Point control2{};  ///< with `curveTo`

    bool operator==(const PathCommand&) const = default;
};

using Path = std::vector<PathCommand>;

/// The colour of a shape. Each renderer has its own colours, for light and for dark.
enum class Ink { label, accent, warning, wood, straw, soap, sparkle };

struct Shape {
    Path path;
    Ink ink = Ink::label;
    double strokeWidth = 0;  ///< points, with round ends and corners; 0: the outline is filled
    double opacity = 1;      ///< 0 to 1

    bool operator==(const Shape&) const = default;
};

/// A picture made of shapes, which are painted in order. In points; the origin is at the top left and y grows
/// downwards.
struct Drawing {
    Size size{};
    std::vector<Shape> shapes{};

    bool operator==(const Drawing&) const = default;
};

// The strokes of a pen, and outlines that several drawings share. Pure functions.

[[nodiscard]] constexpr PathCommand moveTo(Point to) noexcept {
    return {.kind = PathCommand::Kind::moveTo, .to = to};
}
[[nodiscard]] constexpr PathCommand lineTo(Point to) noexcept {
    return {.kind = PathCommand::Kind::lineTo, .to = to};
}
[[nodiscard]] constexpr PathCommand curveTo(Point control1, Point control2, Point to) noexcept {
    return {.kind = PathCommand::Kind::curveTo, .to = to, .control1 = control1, .control2 = control2};
}
/// Back to where the outline began.
[[nodiscard]] constexpr PathCommand closePath() noexcept {
    return {.kind = PathCommand::Kind::close};
}

[[nodiscard]] Path circle(Point centre, double radius);

/// A star with four points and hollow sides.
[[nodiscard]] Path star(Point centre, double radius);

/// The outline with each of its points moved to where `move` says.
[[nodiscard]] Path moved(Path path, const std::function<Point(Point)>& move);

}  // namespace velko::view
