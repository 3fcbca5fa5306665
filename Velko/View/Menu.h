#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Identifiers.h"

namespace velko::view {

/// One line of a menu.
struct MenuItem {
    enum class Kind { entry, header, separator };

    Kind kind = Kind::entry;
    std::string title{};
    std::string help{};    ///< shown while the pointer rests on it; empty: none
    std::string symbol{};  ///< a system symbol's name; empty: none
    char key = 0;  ///< with Command it does the same while the menu's control has the keyboard; 0: none
    std::optional<BundleID> appIcon{};  ///< shows that app's icon, 16 points wide
    bool isEnabled = true;
    bool isChecked = false;
    std::vector<MenuItem> submenu{};
    std::function<void()> action{};  ///< absent where the item only informs or opens a submenu

    [[nodiscard]] static MenuItem separator() { return {.kind = Kind::separator}; }
    [[nodiscard]] static MenuItem header(std::string title) {
        return {.kind = Kind::header, .title = std::move(title)};
    }
    /// A line that the user can't choose.
    [[nodiscard]] static MenuItem notice(std::string title) {
        return {.title = std::move(title), .isEnabled = false};
    }
};

using Menu = std::vector<MenuItem>;

/// The item at a place: its index in the menu, then in its submenu, and so on; null when there is none.
[[nodiscard]] inline const MenuItem* itemAt(const Menu& menu, const std::vector<std::size_t>& place) {
    const Menu* level = &menu;
    const MenuItem* item = nullptr;
    for (const std::size_t index : place) {
        if (level == nullptr || index >= level->size()) {
            return nullptr;
        }
        item = &(*level)[index];
        level = item->isEnabled ? &item->submenu : nullptr;
    }
    return item;
}

/// Runs the action of the item at a place. Returns whether there was an item that can be chosen.
inline bool choose(const Menu& menu, const std::vector<std::size_t>& place) {
    const MenuItem* item = itemAt(menu, place);
    if (item == nullptr || !item->isEnabled || !item->action) {
        return false;
    }
    // The action may destroy the menu.
    const auto action = item->action;
    action();
    return true;
}

}  // namespace velko::view
