#include "Velko/View/Shapes.h"

namespace velko::view {

Path circle(Point centre, double radius) {
    using Kind = PathCommand::Kind;
    const double bow = radius * 0.5523;  // the handle length that makes four curves a circle
    const auto at = [&](double x, double y) { return Point{.x = centre.x + x, .y = centre.y + y}; };
    const auto curve = [](Point control1, Point control2, Point to) {
        return PathCommand{.kind = Kind::curveTo, .to = to, .control1 = control1, .control2 = control2};
    };
    return {{.kind = Kind::moveTo, .to = at(radius, 0)},
            curve(at(radius, bow), at(bow, radius), at(0, radius)),
            curve(at(-bow, radius), at(-radius, bow), at(-radius, 0)),
            curve(at(-radius, -bow), at(-bow, -radius), at(0, -radius)),
            curve(at(bow, -radius), at(radius, -bow), at(radius, 0)),
            {.kind = Kind::close}};
}

}  // namespace velko::view
