#pragma once

#import <AppKit/AppKit.h>

#include "Velko/App/AppMenu.h"
#include "Velko/View/Menu.h"
#include "Velko/mac/Images.h"

namespace velko {

/// A menu as the system draws it. It holds the functions that its items call, and enables nothing by itself.
[[nodiscard]] NSMenu* makeMenu(const view::Menu& menu, AppIcons& icons);

/// The same in a menu that is there already, in place of what it holds.
void fillMenu(NSMenu* native, const view::Menu& menu, AppIcons& icons);

/// The menus at the top of the screen.
[[nodiscard]] NSMenu* makeMainMenu(const std::vector<AppMenu::Menu>& menus);

}  // namespace velko
