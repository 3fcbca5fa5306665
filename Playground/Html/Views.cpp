#include "Playground/Html/Views.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "Playground/Html/Controls.h"
#include "Playground/Html/Images.h"
#include "Playground/Html/Markup.h"
#include "Velko/View/Tree.h"

namespace velko::html {

namespace {

std::string_view styleClass(view::Text::Style style) {
    using Style = view::Text::Style;
    switch (style) {
        case Style::largeTitle: return "large-title";
        case Style::title: return "title";
        case Style::headline: return "headline";
        case Style::body: return "body";
        case Style::caption: return "caption";
    }
    return "body";
}

/// Writes the nodes that only show something or hold other nodes. Controls are written in Controls.cpp.
class TreeWriter final {
 public:
    explicit TreeWriter(const TreeContext& context) : context_(context) {}

    [[nodiscard]] std::string write(const view::Node& node) const {
        return std::visit([&](const auto& content) { return markup(node, content); }, node.content);
    }

 private:
    [[nodiscard]] std::string children(const view::Node& node) const {
        std::string text;
        for (const view::Node& child : view::childrenOf(node)) {
            text += write(child);
        }
        return text;
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::Text& text) const {
        using Style = view::Text::Style;
        std::string classes = "text " + std::string(styleClass(text.style));
        classes += text.isSecondary ? " secondary" : "";
        classes += text.isSelectable ? " selectable" : "";
        classes += text.isCentred ? " centred" : "";
        const bool isHeading = text.style == Style::largeTitle || text.style == Style::title;
        Attributes attributes = common(node, "text", classes);
        if (isHeading) {
            attributes.push_back({"role", "heading"});
            attributes.push_back({"aria-level", "2"});
        }
        return textElement("div", attributes, text.text);
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::Symbol& symbol) const {
        return element("span", common(node, "symbol", "symbol"),
                       glyph(symbol.name, symbol.points, inkClass(symbol.ink), node.label));
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::AppIcon& icon) const {
        return element("span", common(node, "app-icon", "app-icon-node"),
                       appTile(icon.bundleID, context_.nameOf(icon.bundleID), icon.points, node.label));
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::Picture& picture) const {
        Attributes attributes = common(node, "picture", "picture");
        if (!node.label.empty()) {
            attributes.push_back({"role", "img"});
            attributes.push_back({"aria-label", node.label});
        }
        return element("span", attributes, svg(picture.drawing));
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::Stack& stack) const {
        const bool isRow = stack.axis == view::Stack::Axis::row;
        std::string classes = isRow ? "row " : "column ";
        classes += stack.alignment == view::Stack::Alignment::centre ? "centre" : "leading";
        return element("div",
                       common(node, "stack", classes,
                              "gap:" + pixels(stack.spacing) + ";padding:" + pixels(stack.padding)),
                       children(node));
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::Group& group) const {
        Attributes attributes = common(node, "group", "group");
        if (const std::string name = view::spoken(node); !name.empty()) {
            attributes.push_back({"role", "group"});
            attributes.push_back({"aria-label", name});
        }
        attributes.push_back(Attribute::flag("data-takes-apps", static_cast<bool>(group.drop)));
        const std::string title =
            group.title.empty() ? "" : textElement("div", {{"class", "group-title"}}, group.title);
        return element("div", attributes,
                       title + element("div", {{"class", "group-content"}}, children(node)));
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::Scroll& scroll) const {
        Attributes attributes = common(node, "scroll", "scroll", "--height:" + pixels(scroll.height));
        attributes.push_back({"tabindex", "0"});
        attributes.push_back({"role", "group"});
        attributes.push_back({"aria-label", node.label.empty() ? "List" : node.label});
        return element("div", attributes, children(node));
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::List& list) const {
        std::vector<std::string> rows;
        rows.reserve(list.children.size());
        for (const view::Node& row : list.children) {
            rows.push_back(write(row));
        }
        return listMarkup(node, list, context_, rows);
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::Disclosure& disclosure) const {
        return disclosureMarkup(node, disclosure, context_, children(node));
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::Pages& pages) const {
        return pagesMarkup(node, pages, context_, children(node));
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::Divider&) const {
        return voidElement("hr", common(node, "divider", "divider"));
    }

    [[nodiscard]] std::string markup(const view::Node& node, const view::Spacer&) const {
        return element("span", common(node, "spacer", "spacer"));
    }

    [[nodiscard]] std::string markup(const view::Node& node, const auto& control) const {
        return controlMarkup(node, control, context_);
    }

    const TreeContext& context_;
};

constexpr double iconPoints = 16;
constexpr double entrySymbolPoints = 14;

std::string image(const view::MenuItem& item, const NameOf& nameOf) {
    if (item.appIcon) {
        return appTile(*item.appIcon, nameOf(*item.appIcon), iconPoints);
    }
    return item.symbol.empty() ? "" : glyph(item.symbol, entrySymbolPoints);
}

std::string level(const view::Menu& menu, const std::string& place, const std::string& label,
                  const NameOf& nameOf);

/// The keys that do the same as an item, for people or for screen readers. An upper-case key has Shift with
/// it.
std::string keysOf(const view::MenuItem& item, const char* shift, const char* command) {
    if (item.key == 0) {
        return {};
    }
    const bool withShift = item.key >= 'A' && item.key <= 'Z';
    const bool isSmall = item.key >= 'a' && item.key <= 'z';
    return std::string(withShift ? shift : "") + command +
           static_cast<char>(isSmall ? item.key - 'a' + 'A' : item.key);
}

std::string entry(const view::MenuItem& item, const std::string& place, const NameOf& nameOf) {
    const bool opens = !item.submenu.empty();
    const std::string face =
        element("span", {{"class", "menu-check"}, {"aria-hidden", "true"}}, item.isChecked ? "\u2713" : "") +
        element("span", {{"class", "menu-image"}}, image(item, nameOf)) +
        textElement("span", {{"class", "menu-title"}}, item.title) +
        (item.key == 0 ? ""
                       : element("span", {{"class", "menu-key"}, {"data-keys", keysOf(item, "⇧", "⌘")}}));
    Attributes attributes{{"class", opens ? "menu-item opens" : "menu-item"},
                          {"role", item.isChecked ? "menuitemcheckbox" : "menuitem"},
                          {"tabindex", "-1"},
                          {"data-place", place},
                          {"aria-label", item.title},
                          Attribute::unlessEmpty("title", item.help),
                          Attribute::unlessEmpty("aria-keyshortcuts", keysOf(item, "Shift+", "Meta+")),
                          {.name = "aria-checked", .value = "true", .isThere = item.isChecked},
                          {.name = "aria-disabled", .value = "true", .isThere = !item.isEnabled},
                          {.name = "aria-haspopup", .value = "menu", .isThere = opens}};
    if (!opens) {
        return element("div", attributes, face);
    }
    attributes.push_back({"aria-expanded", "false"});
    return element("div", {{"class", "menu-branch"}, {"role", "none"}},
                   element("div", attributes, face) + level(item.submenu, place + ".", item.title, nameOf));
}

std::string level(const view::Menu& menu, const std::string& place, const std::string& label,
                  const NameOf& nameOf) {
    const bool hasImages =
        std::ranges::any_of(menu, [](const auto& item) { return item.appIcon || !item.symbol.empty(); });
    const bool hasChecks = std::ranges::any_of(menu, &view::MenuItem::isChecked);
    std::string items;
    for (std::size_t index = 0; index < menu.size(); ++index) {
        const view::MenuItem& item = menu[index];
        switch (item.kind) {
            case view::MenuItem::Kind::separator:
                items += element("div", {{"class", "menu-separator"}, {"role", "separator"}});
                break;
            case view::MenuItem::Kind::header:
                items += textElement("div", {{"class", "menu-header"}, {"role", "presentation"}}, item.title);
                break;
            case view::MenuItem::Kind::entry:
                items += entry(item, place + std::to_string(index), nameOf);
                break;
        }
    }
    std::string classes = "menu-list";
    classes += hasImages ? " has-images" : "";
    classes += hasChecks ? " has-checks" : "";
    return element("div", {{"class", classes}, {"role", "menu"}, {"aria-label", label}}, items);
}

}  // namespace

std::string treeMarkup(const view::Node& root, const TreeContext& context) {
    return TreeWriter(context).write(root);
}

std::string menuMarkup(const view::Menu& menu, const NameOf& nameOf) {
    return level(menu, "", "Menu", nameOf);
}

}  // namespace velko::html
