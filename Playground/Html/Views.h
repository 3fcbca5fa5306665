#pragma once

#include <string>
#include <string_view>

#include "Playground/Html/Images.h"
#include "Velko/View/Menu.h"
#include "Velko/View/Node.h"

namespace velko::html {

/// What a tree's markup depends on besides the tree.
struct TreeContext {
    std::string_view surface;  ///< the surface's name; with it, ids are unique in the page
    const NameOf& nameOf;
};

/// A tree as markup. Each node is one element that carries its id as `data-id` and its kind as `data-kind`;
/// what a control listens to is in its other data attributes. Every control has an accessible name.
[[nodiscard]] std::string treeMarkup(const view::Node& root, const TreeContext& context);

/// A menu as markup: a list of items, each with its place as `data-place` ("2", or "2.0" in a submenu), and
/// every submenu ready within its item.
[[nodiscard]] std::string menuMarkup(const view::Menu& menu, const NameOf& nameOf);

}  // namespace velko::html
