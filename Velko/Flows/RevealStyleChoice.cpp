#include "Velko/Flows/RevealStyleChoice.h"

#include <algorithm>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

namespace {

bool isNotched(const Display& display) {
    return display.safeAreaTop > 0 || MenuBarStrip::housing(display);
}

}  // namespace

RevealStyle chooseRevealStyle(const Platform& platform, const RevealSettings& settings) {
    const std::vector<Display> displays = platform.displays.displays();
    if (displays.empty()) {
        return settings.otherStyle;
    }
    auto holder = displays.begin();
    if (const auto broom = Inventory::ownItemFrame(platform)) {
        // Accessibility measures downwards from the top of the primary display, displays upwards.
        const Point centre{.x = broom->x + broom->width / 2,
                           .y = displays.front().frame.maxY() - (broom->y + broom->height / 2)};
        const auto found = std::ranges::find_if(
            displays, [&](const Display& display) { return display.frame.contains(centre); });
        holder = found == displays.end() ? holder : found;
    }
    return isNotched(*holder) ? settings.notchedStyle : settings.otherStyle;
}

}  // namespace velko
