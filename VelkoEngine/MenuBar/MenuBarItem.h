#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"

namespace velko {

/// One icon in the menu bar. An app may own several; they differ by title and frame.
struct MenuBarItem {
    BundleID bundleID;
    std::string appName;
    ProcessID pid = 0;
    std::string title;  ///< empty when the item has no text
    Rect frame;         ///< points; origin at the top left of the primary screen, y grows downwards

    bool operator==(const MenuBarItem&) const = default;
};

}  // namespace velko

/// Of all five fields.
template <>
struct std::hash<velko::MenuBarItem> {
    [[nodiscard]] std::size_t operator()(const velko::MenuBarItem& item) const noexcept;
};
