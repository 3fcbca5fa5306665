#include "Velko/Broom/BelowBroom.h"

#include "VelkoEngine/MenuBar/MenuBarStrip.h"

namespace velko {

namespace {

constexpr double screenMargin = 8;  // points

}  // namespace

std::optional<Surface::Place> placeBelowBroom(const std::optional<Rect>& broom,
                                              const std::vector<Display>& displays, double statusBarThickness,
                                              double gap) {
    if (displays.empty()) {
        return std::nullopt;
    }
    const Display* display = &displays.front();
    Rect anchor{.x = display->frame.maxX()};
    if (broom) {
        const Point centre{.x = broom->x + broom->width / 2,
                           .y = display->frame.maxY() - (broom->y + broom->height / 2)};
        if (const Display* const holder = MenuBarStrip::displayUnder(displays, centre)) {
            display = holder;
            anchor = *broom;
        }
    }
    const double barHeight = MenuBarStrip::height(*display, statusBarThickness);
    const double top = display->frame.maxY() - barHeight - gap;
    anchor.y = top;
    anchor.height = barHeight + gap;
    const Rect& visible = display->visibleFrame;
    return Surface::Place{.anchor = anchor,
                          .bounds = {.x = visible.x + screenMargin,
                                     .y = visible.y + screenMargin,
                                     .width = visible.width - 2 * screenMargin,
                                     .height = top - visible.y - screenMargin}};
}

}  // namespace velko
