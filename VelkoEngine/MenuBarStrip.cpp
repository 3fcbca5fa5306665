#include "VelkoEngine/MenuBarStrip.h"

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

bool contains(const std::vector<Display>& displays, double statusBarThickness, Point point) {
    if (displays.empty()) {
        return false;
    }
    const Point upwards{.x = point.x, .y = displays.front().frame.maxY() - point.y};
    const Display* const display = displayUnder(displays, upwards);
    return display != nullptr && display->frame.maxY() - upwards.y <= height(*display, statusBarThickness);
}

}  // namespace velko::MenuBarStrip
