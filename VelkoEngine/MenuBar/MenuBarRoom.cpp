#include "VelkoEngine/MenuBar/MenuBarRoom.h"

#include <algorithm>

#include "VelkoEngine/MenuBar/MenuBarStrip.h"

namespace velko::MenuBarRoom {

namespace {

constexpr double menusShare = 1.0 / 3;  ///< of a bar, for menus of which nobody knows where they end

/// Where icons can begin, at the left.
double leftEnd(const Bar& bar) {
    const Rect& frame = bar.display.frame;
    // The menus are in one bar only, which may be that of another display.
    const bool areHere = bar.menusEnd && *bar.menusEnd > frame.x && *bar.menusEnd <= frame.maxX();
    const double menus = areHere ? *bar.menusEnd : frame.x + frame.width * menusShare;
    if (const auto hidden = MenuBarStrip::housing(bar.display)) {
        return std::max(hidden->maxX(), menus);
    }
    // The system does not say how wide the housing is, but it is in the middle.
    return MenuBarStrip::isNotched(bar.display) ? std::max(frame.x + frame.width / 2, menus) : menus;
}

bool standsIn(const Bar& bar, const Rect& frame) {
    const Point middle{.x = frame.x + frame.width / 2,
                       .y = bar.displays.front().frame.maxY() - (frame.y + frame.height / 2)};
    return frame.width > 0 && MenuBarStrip::displayUnder(bar.displays, middle) == &bar.display;
}

/// What no app's icon stands in at the right end of the bar.
double rightOfIcons(const Bar& bar) {
    std::optional<double> end;
    const auto look = [&](const Rect& frame) {
        if (standsIn(bar, frame)) {
            end = std::max(end.value_or(frame.maxX()), frame.maxX());
        }
    };
    for (const MenuBarItem& item : bar.items) {
        if (!AllowlistPlanner::isAlwaysAllowed(item.bundleID)) {
            look(item.frame);
        }
    }
    if (bar.broom) {
        look(*bar.broom);
    }
    return end ? std::max(0.0, bar.display.frame.maxX() - *end) : 0;
}

}  // namespace

Widths updated(Widths widths, const std::vector<MenuBarItem>& items) {
    Widths found;
    for (const MenuBarItem& item : items) {
        found[item.bundleID] += std::max(0.0, item.frame.width);
    }
    for (auto& [bundleID, width] : found) {
        const auto before = widths.find(bundleID);
        if (width <= 0 && before != widths.end()) {
            width = before->second;
        }
    }
    return found;
}

Need need(const Bar& bar, const VisibilityPlan& plan) {
    double icons = bar.broom ? bar.broom->width : 0;
    double system = 0;
    for (const auto& [bundleID, width] : bar.widths) {
        if (AllowlistPlanner::isAlwaysAllowed(bundleID)) {
            system += width;
        } else if (!plan.hides(bundleID)) {
            icons += width;
        }
    }
    return {.needed = icons + (system > 0 ? system : rightOfIcons(bar)),
            .room = bar.display.frame.maxX() - leftEnd(bar)};
}

BundleIDs withoutPlace(const std::vector<Display>& displays, double statusBarThickness,
                       const std::vector<MenuBarItem>& items, const VisibilityPlan& plan) {
    BundleIDs apps;
    for (const MenuBarItem& item : items) {
        if (item.frame.width > 0 && !plan.hides(item.bundleID) &&
            !AllowlistPlanner::isAlwaysAllowed(item.bundleID) &&
            !MenuBarStrip::shows(displays, statusBarThickness, item.frame)) {
            apps.insert(item.bundleID);
        }
    }
    return displays.empty() ? BundleIDs() : apps;
}

}  // namespace velko::MenuBarRoom
