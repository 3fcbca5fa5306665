#pragma once

#import <AppKit/AppKit.h>

#include "Velko/App/AppMenu.h"
#include "Velko/View/Menu.h"
#include "Velko/mac/Images.h"

namespace velko {

/// A menu that the system can show. It owns the functions that its items call. What is enabled, the items
/// say.
[[nodiscard]] NSMenu* makeMenu(const view::Menu& menu, AppIcons& icons);

/// Fills a menu that exists already, in place of what it contains.
void fillMenu(NSMenu* native, const view::Menu& menu, AppIcons& icons);

/// Shows the menus at the top of the screen, while the program is in front. They own the functions that
/// their items call.
void showMainMenu(const std::vector<AppMenu::Menu>& menus);

}  // namespace velko
