#include "Velko/View/Menu.h"

namespace velko::view {

const MenuItem* itemAt(const Menu& menu, const std::vector<std::size_t>& place) {
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

bool choose(const Menu& menu, const std::vector<std::size_t>& place) {
    const MenuItem* item = itemAt(menu, place);
    if (item == nullptr || !item->isEnabled || !item->action) {
        return false;
    }
    // The menu may be gone before the action is through.
    const auto action = item->action;
    action();
    return true;
}

}  // namespace velko::view
