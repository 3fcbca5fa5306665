#pragma once

#include <string>

#include "Playground/Html/Icons.h"
#include "Velko/View/Menu.h"

namespace velko::html {

/// A menu as markup: a list of items, each with its place as `data-place` ("2", or "2.0" in a submenu), and
/// every submenu ready within its item.
[[nodiscard]] std::string menuMarkup(const view::Menu& menu, const NameOf& nameOf);

}  // namespace velko::html
