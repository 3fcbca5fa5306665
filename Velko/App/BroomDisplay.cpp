#include "Velko/App/BroomDisplay.h"

#include <algorithm>

#include "VelkoEngine/MenuBar/MenuBarStrip.h"

namespace velko::BroomDisplay {

const Display* of(const std::optional<Rect>& broom, const std::vector<Display>& displays) {
    if (displays.empty()) {
        return nullptr;
    }
    if (broom) {
        // Accessibility measures downwards from the top of the primary display, displays upwards.
        const Point centre{.x = broom->x + broom->width / 2,
                           .y = displays.front().frame.maxY() - (broom->y + broom->height / 2)};
        const auto found = std::ranges::find_if(
            displays, [&](const Display& display) { return display.frame.contains(centre); });
        if (found != displays.end()) {
            return &*found;
        }
    }
    return &displays.front();
}

RevealStyle style(const std::optional<Rect>& broom, const std::vector<Display>& displays,
                  const RevealSettings& settings) {
    const Display* const display = of(broom, displays);
    return display != nullptr && MenuBarStrip::isNotched(*display) ? settings.notchedStyle
                                                                   : settings.otherStyle;
}

bool isWide(const std::optional<Rect>& broom, const std::vector<Display>& displays, const Layout& layout,
            std::optional<bool> before) {
    if (!layout.showAllFromWidth || displays.empty()) {
        return false;
    }
    const auto least = static_cast<double>(*layout.showAllFromWidth);
    const auto isThatWide = [least](const Display& display) { return display.frame.width >= least; };
    const bool isClear =
        broom || std::ranges::all_of(displays, isThatWide) || std::ranges::none_of(displays, isThatWide);
    return before && !isClear ? *before : isThatWide(*of(broom, displays));
}

}  // namespace velko::BroomDisplay
