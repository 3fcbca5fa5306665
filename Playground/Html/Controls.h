#pragma once

#include <string>
#include <string_view>

#include "Playground/Html/Markup.h"
#include "Playground/Html/Views.h"
#include "Velko/View/Node.h"

// The markup of controls: of everything that the Tab key reaches.

namespace velko::html {

/// The attributes that the element of every node has.
[[nodiscard]] Attributes common(const view::Node& node, std::string_view kind, std::string_view classes,
                                const std::string& style = {});

[[nodiscard]] std::string controlMarkup(const view::Node& node, const view::Button& button,
                                        const TreeContext& context);
[[nodiscard]] std::string controlMarkup(const view::Node& node, const view::Toggle& toggle,
                                        const TreeContext& context);
[[nodiscard]] std::string controlMarkup(const view::Node& node, const view::Picker& picker,
                                        const TreeContext& context);
[[nodiscard]] std::string controlMarkup(const view::Node& node, const view::MenuButton& button,
                                        const TreeContext& context);
[[nodiscard]] std::string controlMarkup(const view::Node& node, const view::Tile& tile,
                                        const TreeContext& context);

/// Tabs, and below them the chosen page. `page` is the page's markup.
[[nodiscard]] std::string pagesMarkup(const view::Node& node, const view::Pages& pages,
                                      const TreeContext& context, const std::string& page);

}  // namespace velko::html
