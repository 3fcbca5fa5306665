#include "Playground/Html/MenuHtml.h"

#include <algorithm>
#include <cstddef>

#include "Playground/Html/Markup.h"

namespace velko::html {

namespace {

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

std::string entry(const view::MenuItem& item, const std::string& place, const NameOf& nameOf) {
    const bool opens = !item.submenu.empty();
    const std::string face =
        element("span", {{"class", "menu-check"}, {"aria-hidden", "true"}}, item.isChecked ? "\u2713" : "") +
        element("span", {{"class", "menu-image"}}, image(item, nameOf)) +
        textElement("span", {{"class", "menu-title"}}, item.title);
    Attributes attributes{{"class", opens ? "menu-item opens" : "menu-item"},
                          {"role", item.isChecked ? "menuitemcheckbox" : "menuitem"},
                          {"tabindex", "-1"},
                          {"data-place", place},
                          {"aria-label", item.title},
                          Attribute::unlessEmpty("title", item.help),
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

std::string menuMarkup(const view::Menu& menu, const NameOf& nameOf) {
    return level(menu, "", "Menu", nameOf);
}

}  // namespace velko::html
