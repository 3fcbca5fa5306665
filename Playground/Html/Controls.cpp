#include "Playground/Html/Controls.h"

#include <cstddef>
#include <utility>

#include "Velko/View/Tree.h"

namespace velko::html {

namespace {

constexpr double symbolPoints = 14;

std::string_view styleClass(view::Button::Style style) {
    using Style = view::Button::Style;
    switch (style) {
        case Style::standard: return "standard";
        case Style::primary: return "primary";
        case Style::link: return "link";
    }
    return "standard";
}

/// The name of a key in the page: "enter", "w".
std::string shortcutText(const view::Shortcut& shortcut) {
    using Key = view::Shortcut::Key;
    switch (shortcut.key) {
        case Key::none: return {};
        case Key::enter: return "enter";
        case Key::escape: return "escape";
        case Key::leftArrow: return "arrowleft";
        case Key::character: return {shortcut.character};
    }
    return {};
}

/// The keys that press a button, with a space between them.
std::string keysText(const view::Button& button) {
    const std::string other = shortcutText(button.alternative);
    return shortcutText(button.shortcut) + (other.empty() ? "" : " ") + other;
}

/// A symbol, a title, or both.
std::string face(const std::string& symbol, const std::string& title) {
    return (symbol.empty() ? "" : glyph(symbol, symbolPoints)) +
           (title.empty() ? "" : textElement("span", {{"class", "button-title"}}, title));
}

/// The name for screen readers, if it differs from the visible text. It always contains the visible text:
/// people who control the machine by voice say what they see.
Attribute nameBeyond(const view::Node& node, const std::string& visible) {
    std::string name = view::spoken(node);
    const bool isVisible = name == visible;
    if (!name.contains(visible)) {
        name = visible + ", " + name;
    }
    return {.name = "aria-label", .value = std::move(name), .isThere = !isVisible};
}

Attributes with(Attributes attributes, const Attributes& more) {
    attributes.insert(attributes.end(), more.begin(), more.end());
    return attributes;
}

std::string segmented(const view::Node& node, const view::Picker& picker, const TreeContext& context) {
    std::string options;
    for (std::size_t index = 0; index < picker.options.size(); ++index) {
        options += element("label", {{"class", "segment"}},
                           voidElement("input", {{"type", "radio"},
                                                 {"name", pageID(node.id, context)},
                                                 {"value", std::to_string(index)},
                                                 Attribute::flag("checked", index == picker.selected),
                                                 Attribute::flag("disabled", !node.isEnabled)}) +
                               textElement("span", {}, picker.options[index]));
    }
    const std::string title =
        picker.title.empty() ? "" : textElement("span", {{"class", "control-title"}}, picker.title);
    return element("div",
                   with(common(node, "segments", "picker segments"),
                        {{"role", "radiogroup"},
                         {"aria-label", view::spoken(node)},
                         {.name = "aria-disabled", .value = "true", .isThere = !node.isEnabled}}),
                   title + element("div", {{"class", "segment-track"}}, options));
}

}  // namespace

std::string pageID(const std::string& nodeID, const TreeContext& context) {
    return std::string(context.surface) + "/" + nodeID;
}

Attributes common(const view::Node& node, std::string_view kind, std::string_view classes,
                  const std::string& style) {
    std::string full = style;
    if (node.width > 0) {
        full += (full.empty() ? "" : ";") + ("width:" + pixels(node.width));
    }
    if (node.minHeight > 0) {
        full += (full.empty() ? "" : ";") + ("min-height:" + pixels(node.minHeight));
    }
    return {{"class", std::string(classes)},
            {"data-kind", std::string(kind)},
            Attribute::unlessEmpty("data-id", node.id),
            Attribute::unlessEmpty("title", node.help),
            Attribute::unlessEmpty("style", full)};
}

std::string controlMarkup(const view::Node& node, const view::KeyRecorder& recorder, const TreeContext&) {
    return element("button",
                   with(common(node, "button", "button standard recorder"),
                        {{"type", "button"},
                         nameBeyond(node, recorder.title),
                         Attribute::flag("data-recording", recorder.isRecording),
                         Attribute::flag("disabled", !node.isEnabled)}),
                   textElement("span", {{"class", "button-title"}}, recorder.title));
}

std::string controlMarkup(const view::Node& node, const view::Button& button, const TreeContext&) {
    std::string classes = "button " + std::string(styleClass(button.style));
    classes += button.title.empty() ? " symbol-only" : "";
    return element(
        "button",
        with(common(node, "button", classes), {{"type", "button"},
                                               nameBeyond(node, button.title),
                                               Attribute::unlessEmpty("data-shortcut", keysText(button)),
                                               Attribute::flag("disabled", !node.isEnabled)}),
        face(button.symbol, button.title));
}

std::string controlMarkup(const view::Node& node, const view::Toggle& toggle, const TreeContext&) {
    const bool isSlider = toggle.style == view::Toggle::Style::slider;
    return element("label", common(node, "toggle", isSlider ? "toggle" : "toggle checkbox"),
                   voidElement("input", {{"type", "checkbox"},
                                         {.name = "role", .value = "switch", .isThere = isSlider},
                                         nameBeyond(node, toggle.title),
                                         Attribute::flag("checked", toggle.isOn),
                                         Attribute::flag("disabled", !node.isEnabled)}) +
                       textElement("span", {{"class", "toggle-title"}}, toggle.title));
}

std::string controlMarkup(const view::Node& node, const view::Picker& picker, const TreeContext& context) {
    if (picker.style == view::Picker::Style::segmented) {
        return segmented(node, picker, context);
    }
    std::string options;
    for (std::size_t index = 0; index < picker.options.size(); ++index) {
        options += textElement(
            "option",
            {{"value", std::to_string(index)}, Attribute::flag("selected", index == picker.selected)},
            picker.options[index]);
    }
    const std::string title =
        picker.title.empty() ? "" : textElement("span", {{"class", "control-title"}}, picker.title);
    return element(
        "label", common(node, "picker", "picker"),
        title + element("select",
                        {{"aria-label", view::spoken(node)}, Attribute::flag("disabled", !node.isEnabled)},
                        options));
}

std::string controlMarkup(const view::Node& node, const view::MenuButton& button, const TreeContext&) {
    const char* classes = button.title.empty() ? "button standard symbol-only" : "button standard pull-down";
    return element("button",
                   with(common(node, "menu-button", classes), {{"type", "button"},
                                                               {"aria-haspopup", "menu"},
                                                               nameBeyond(node, button.title),
                                                               Attribute::flag("disabled", !node.isEnabled)}),
                   face(button.symbol, button.title));
}

std::string controlMarkup(const view::Node& node, const view::Tile& tile, const TreeContext&) {
    const std::string badge =
        tile.badge.empty() ? "" : " " + textElement("span", {{"class", "tile-badge"}}, tile.badge);
    const std::string name = view::spoken(node);
    return element("button",
                   with(common(node, "tile", "tile"),
                        {{"type", "button"},
                         {"aria-label", name.empty() ? tile.bundleID : name},
                         {"data-bundle", tile.bundleID},
                         {"draggable", "true"},
                         {.name = "aria-haspopup", .value = "menu", .isThere = static_cast<bool>(tile.menu)},
                         Attribute::flag("data-presses", static_cast<bool>(tile.press)),
                         Attribute::flag("data-menu", static_cast<bool>(tile.menu)),
                         Attribute::flag("disabled", !node.isEnabled)}),
                   appTile(tile.bundleID, tile.name, 44) +
                       textElement("span", {{"class", "tile-name"}}, tile.name) + badge);
}

std::string pagesMarkup(const view::Node& node, const view::Pages& pages, const TreeContext& context,
                        const std::string& page) {
    const std::string base = pageID(node.id, context);
    const std::string selected = base + "/tab" + std::to_string(pages.selected);
    std::string tabs;
    for (std::size_t index = 0; index < pages.tabs.size(); ++index) {
        const bool isSelected = index == pages.selected;
        tabs += element("button",
                        {{"type", "button"},
                         {"class", "tab"},
                         {"role", "tab"},
                         {"id", base + "/tab" + std::to_string(index)},
                         {"aria-selected", isSelected ? "true" : "false"},
                         {"aria-controls", base + "/page"},
                         {"tabindex", isSelected ? "0" : "-1"},
                         {"data-value", std::to_string(index)},
                         Attribute::flag("disabled", !node.isEnabled)},
                        face(pages.tabs[index].symbol, pages.tabs[index].title));
    }
    const std::string name = view::spoken(node);
    return element(
        "div", common(node, "pages", "pages"),
        element("div",
                {{"class", "tabs"}, {"role", "tablist"}, {"aria-label", name.empty() ? "Pages" : name}},
                tabs) +
            element("div",
                    {{"class", "page"},
                     {"role", "tabpanel"},
                     {"id", base + "/page"},
                     {"aria-labelledby", selected}},
                    page));
}

}  // namespace velko::html
