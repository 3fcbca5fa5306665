#include "VelkoEngine/MenuBar/MenuBarStrip.h"

#include <algorithm>

namespace velko::MenuBarStrip {

const Display* displayUnder(const std::vector<Display>& displays, Point point) {
    const auto found = std::ranges::find_if(displays, [point](const Display& display) {
        const Rect& frame = display.frame;
        return point.x >= frame.x && point.x < frame.maxX() && point.y > frame.y && point.y <= frame.maxY();
    });
    return found == displays.end() ? nullptr : &*found;
}

double height(const Display& display, double statusBarThickness) {
    return std::max(
        {display.safeAreaTop, display.frame.maxY() - display.visibleFrame.maxY(), statusBarThickness});
}

bool holds(const std::vector<Display>& displays, double statusBarThickness, Point point) {
    const Display* const display = displayUnder(displays, point);
    return display != nullptr && display->frame.maxY() - point.y <= height(*display, statusBarThickness);
}

bool contains(const std::vector<Display>& displays, double statusBarThickness, Point point) {
    if (displays.empty()) {
        return false;
    }
    return holds(displays, statusBarThickness, {.x = point.x, .y = displays.front().frame.maxY() - point.y});
}

std::optional<Rect> housing(const Display& display) {
    const Rect& left = display.auxiliaryTopLeft;
    const Rect& right = display.auxiliaryTopRight;
    if (left.width <= 0 || right.width <= 0 || right.x <= left.maxX()) {
        return std::nullopt;
    }
    return Rect{.x = left.maxX(), .y = left.y, .width = right.x - left.maxX(), .height = left.height};
}

bool isNotched(const Display& display) {
    return display.safeAreaTop > 0 || housing(display);
}

bool shows(const std::vector<Display>& displays, double statusBarThickness, const Rect& frame) {
    const Point middle{.x = frame.x + frame.width / 2, .y = frame.y + frame.height / 2};
    if (frame.width <= 0 || frame.height <= 0 || !contains(displays, statusBarThickness, middle)) {
        return false;
    }
    const Point upwards{.x = middle.x, .y = displays.front().frame.maxY() - middle.y};
    const Display& display = *displayUnder(displays, upwards);
    const auto hidden = housing(display);
    const bool isHidden = hidden && upwards.x >= hidden->x && upwards.x < hidden->maxX();
    return !isHidden && frame.x >= display.frame.x && frame.maxX() <= display.frame.maxX();
}

}  // namespace velko::MenuBarStrip
