#pragma once

#include <memory>

#include "Velko/App/FaceParts.h"
#include "Velko/View/Menu.h"

namespace velko {

class MenuActions;

/// The menus of the broom, made afresh each time one opens. An entry that is chosen when the actions are
/// gone does nothing. Main thread.
namespace StatusMenus {

[[nodiscard]] view::Menu mainMenu(const FaceParts& parts, const std::weak_ptr<MenuActions>& actions);

/// For people who look under the hood.
[[nodiscard]] view::Menu debugMenu(const FaceParts& parts, const std::weak_ptr<MenuActions>& actions);

}  // namespace StatusMenus

}  // namespace velko
