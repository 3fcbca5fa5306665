#pragma once

#include <map>
#include <optional>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/Screen.h"

/// Whether icons have room in a menu bar. Pure functions; widths are in points. Nobody can know how much room
/// the system finds, so they only tell what certainly has none: an unknown width counts as none, and what the
/// system's own items take counts as little as it can be.
namespace velko::MenuBarRoom {

/// How wide the icons of an app were when they were last read, all of them together.
using Widths = std::map<BundleID, double>;

/// Takes over the widths that a scan has found. An app whose icons do not tell their size keeps the width
/// that it had; one without icons is forgotten.
[[nodiscard]] Widths updated(Widths widths, const std::vector<MenuBarItem>& items);

/// A bar and who is in it.
struct Bar {
    const std::vector<Display>& displays;  ///< the primary one first
    const Display& display;                ///< one of them: the bar is at its top
    const std::vector<MenuBarItem>& items;
    const Widths& widths;
    std::optional<Rect> broom{};       ///< origin at the top left of the primary screen
    std::optional<double> menusEnd{};  ///< where the front app's menus end, as x on the screen
};

/// What icons need, and what there is.
struct Need {
    double needed = 0;
    double room = 0;

    [[nodiscard]] bool fits() const noexcept { return needed <= room; }
};

/// Whether all icons that show under a plan have room, the broom and the system's items too. They stand right
/// of a camera housing, or else right of the front app's menus; while nobody knows where those end, a third
/// of the bar counts as theirs.
[[nodiscard]] Need need(const Bar& bar, const VisibilityPlan& plan);

/// The apps that the plan shows and that own an icon which no person can see, as it was last read: it lies
/// under a camera housing, or outside of every bar.
[[nodiscard]] BundleIDs withoutPlace(const std::vector<Display>& displays, double statusBarThickness,
                                     const std::vector<MenuBarItem>& items, const VisibilityPlan& plan);

}  // namespace velko::MenuBarRoom
