#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Playground/Html/Markup.h"
#include "Playground/Html/Views.h"
#include "Velko/View/Node.h"

// The markup of controls: of everything that the Tab key reaches.

namespace velko::html {

/// An id that is unique in the page. Other elements of the page refer to it.
[[nodiscard]] std::string pageID(const std::string& nodeID, const TreeContext& context);

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
[[nodiscard]] std::string controlMarkup(const view::Node& node, const view::SearchField& field,
                                        const TreeContext& context);
[[nodiscard]] std::string controlMarkup(const view::Node& node, const view::Progress& progress,
                                        const TreeContext& context);

[[nodiscard]] std::string controlMarkup(const view::Node& node, const view::KeyRecorder& recorder,
                                        const TreeContext& context);

/// A list. `rows` is the markup of each row.
[[nodiscard]] std::string listMarkup(const view::Node& node, const view::List& list,
                                     const TreeContext& context, const std::vector<std::string>& rows);

/// A title with a triangle, and below it what it shows. `content` is the markup of that.
[[nodiscard]] std::string disclosureMarkup(const view::Node& node, const view::Disclosure& disclosure,
                                           const TreeContext& context, const std::string& content);

/// Tabs, and below them the chosen page. `page` is the page's markup.
[[nodiscard]] std::string pagesMarkup(const view::Node& node, const view::Pages& pages,
                                      const TreeContext& context, const std::string& page);

}  // namespace velko::html
