#include <algorithm>
#include <cmath>
#include <cstddef>

#include "Playground/Html/Controls.h"
#include "Playground/Html/Images.h"
#include "Velko/View/Tree.h"

namespace velko::html {

namespace {

constexpr double fieldSymbolPoints = 13;

/// Where a screen reader is in a list while the keyboard is in the list, or in the field that works it.
std::string firstSelected(const view::List& list, const TreeContext& context) {
    const auto row = std::ranges::find_if(
        list.children, [&](const view::Node& child) { return list.selected.contains(child.id); });
    return row == list.children.end() ? "" : pageID(row->id, context);
}

std::string rowMarkup(const view::List& list, const view::Node& row, const TreeContext& context,
                      const std::string& content) {
    const bool isSelected = list.selected.contains(row.id);
    return element(
        "div",
        {{"class", row.isEnabled ? "list-row" : "list-row heading"},
         {"role", "row"},
         {"id", pageID(row.id, context)},
         {.name = "data-row", .value = row.id, .isThere = row.isEnabled},
         {"aria-label", view::spoken(row)},
         {.name = "aria-selected", .value = isSelected ? "true" : "false", .isThere = row.isEnabled}},
        element("div", {{"class", "list-cell"}, {"role", "gridcell"}}, content));
}

}  // namespace

std::string listMarkup(const view::Node& node, const view::List& list, const TreeContext& context,
                       const std::vector<std::string>& rows) {
    std::string content;
    for (std::size_t index = 0; index < std::min(rows.size(), list.children.size()); ++index) {
        content += rowMarkup(list, list.children[index], context, rows[index]);
    }
    if (rows.empty()) {
        content = element("div", {{"role", "row"}}, element("div", {{"role", "gridcell"}}));
    }
    const bool isSeveral = list.selection == view::List::Selection::several;
    Attributes attributes =
        common(node, "list", list.grows ? "list grows" : "list", "--height:" + pixels(list.height));
    const Attributes more{{"role", "grid"},
                          {"id", pageID(node.id, context)},
                          {"tabindex", "0"},
                          {"aria-label", view::spoken(node)},
                          {.name = "aria-multiselectable", .value = "true", .isThere = isSeveral},
                          {.name = "aria-disabled", .value = "true", .isThere = !node.isEnabled},
                          Attribute::flag("data-menu", static_cast<bool>(list.menu)),
                          Attribute::flag("data-activates", static_cast<bool>(list.activate)),
                          Attribute::unlessEmpty("aria-activedescendant", firstSelected(list, context))};
    attributes.insert(attributes.end(), more.begin(), more.end());
    return element("div", attributes, content);
}

std::string controlMarkup(const view::Node& node, const view::SearchField& field,
                          const TreeContext& context) {
    const std::string list = field.drives.empty() ? "" : pageID(field.drives, context);
    return element("div", common(node, "search", "search"),
                   glyph("magnifyingglass", fieldSymbolPoints) +
                       voidElement("input", {{"type", "search"},
                                             {"value", field.text},
                                             {"placeholder", field.placeholder},
                                             {"aria-label", view::spoken(node)},
                                             {"autocomplete", "off"},
                                             {"spellcheck", "false"},
                                             Attribute::unlessEmpty("aria-controls", list),
                                             Attribute::flag("data-first", field.hasFocus),
                                             Attribute::flag("disabled", !node.isEnabled)}));
}

std::string controlMarkup(const view::Node& node, const view::Progress& progress, const TreeContext&) {
    const double share = std::isfinite(progress.value) ? std::clamp(progress.value, 0.0, 1.0) : 0;
    const std::string percent = std::to_string(std::lround(share * 100));
    Attributes attributes = common(node, "progress", "progress");
    const Attributes more{{"role", "progressbar"},
                          {"aria-label", node.label.empty() ? "Progress" : node.label},
                          {"aria-valuemin", "0"},
                          {"aria-valuemax", "100"},
                          {"aria-valuenow", percent}};
    attributes.insert(attributes.end(), more.begin(), more.end());
    return element("div", attributes, element("span", {{"style", "width:" + percent + "%"}}));
}

std::string disclosureMarkup(const view::Node& node, const view::Disclosure& disclosure,
                             const TreeContext& context, const std::string& content) {
    const std::string body = pageID(node.id, context) + "/content";
    std::string parts = element("button",
                                {{"type", "button"},
                                 {"class", "disclosure-title"},
                                 {"aria-expanded", disclosure.isOpen ? "true" : "false"},
                                 {.name = "aria-controls", .value = body, .isThere = disclosure.isOpen},
                                 Attribute::flag("disabled", !node.isEnabled)},
                                textElement("span", {}, view::spoken(node)));
    if (disclosure.isOpen) {
        parts += element("div", {{"class", "disclosure-content"}, {"id", body}}, content);
    }
    return element("div", common(node, "disclosure", "disclosure"), parts);
}

}  // namespace velko::html
