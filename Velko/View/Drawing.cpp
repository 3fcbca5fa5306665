#include "Velko/View/Drawing.h"

namespace velko::view {

namespace {

/// Points measured from a centre.
struct Offset {
    Point centre;

    [[nodiscard]] Point operator()(double x, double y) const {
        return {.x = centre.x + x, .y = centre.y + y};
    }
};

}  // namespace

Path circle(Point centre, double radius) {
    const double bow = radius * 0.5523;  // handles of this length make four curves a circle
    const Offset at{centre};
    return {moveTo(at(radius, 0)),
            curveTo(at(radius, bow), at(bow, radius), at(0, radius)),
            curveTo(at(-bow, radius), at(-radius, bow), at(-radius, 0)),
            curveTo(at(-radius, -bow), at(-bow, -radius), at(0, -radius)),
            curveTo(at(bow, -radius), at(radius, -bow), at(radius, 0)),
            closePath()};
}

Path star(Point centre, double radius) {
    const double hollow = radius * 0.14;
    const Offset at{centre};
    return {moveTo(at(0, -radius)),
            curveTo(at(0, -hollow), at(hollow, 0), at(radius, 0)),
            curveTo(at(hollow, 0), at(0, hollow), at(0, radius)),
            curveTo(at(0, hollow), at(-hollow, 0), at(-radius, 0)),
            curveTo(at(-hollow, 0), at(0, -hollow), at(0, -radius)),
            closePath()};
}

Path moved(Path path, const std::function<Point(Point)>& move) {
    for (PathCommand& command : path) {
        command.to = move(command.to);
        command.control1 = move(command.control1);
        command.control2 = move(command.control2);
    }
    return path;
}

}  // namespace velko::view
