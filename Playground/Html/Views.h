#pragma once

#include <string>
#include <string_view>

#include "Playground/Html/Images.h"
#include "Velko/View/Menu.h"
#include "Velko/View/Node.h"

namespace velko::html {

/// What the markup of a tree needs besides the tree.
struct TreeContext {
    std::string_view surface;  ///< the name of the surface; it makes ids unique in the page
    const NameOf& nameOf;
};

/// A tree as markup. Each node is one element, with its id in `data-id` and its kind in `data-kind`. Other
/// data attributes say what a control does. Every control has a name for screen readers.
[[nodiscard]] std::string treeMarkup(const view::Node& root, const TreeContext& context);

/// A menu as markup: a list of items. Each item has its place in `data-place` ("2", or "2.0" in a submenu)
/// and contains its submenu.
[[nodiscard]] std::string menuMarkup(const view::Menu& menu, const NameOf& nameOf);

}  // namespace velko::html
