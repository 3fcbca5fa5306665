#pragma once

namespace velko {

/// A point on a screen, in points. The functions that take or return one say whether y grows up or down.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;

    [[nodiscard]] constexpr double maxX() const noexcept { return x + width; }
    [[nodiscard]] constexpr double maxY() const noexcept { return y + height; }

    /// Whether a point lies inside; the left and the low edge belong to the rectangle, the others don't.
    [[nodiscard]] constexpr bool contains(Point point) const noexcept {
        return point.x >= x && point.x < maxX() && point.y >= y && point.y < maxY();
    }
};

}  // namespace velko
