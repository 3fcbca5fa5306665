#include "Velko/Setup/SetupFrame.h"

#include <utility>

#include "Velko/View/Build.h"

namespace velko::SetupFrame {

namespace {

constexpr double width = 520;
constexpr double padding = 28;

}  // namespace

view::Node step(std::string id, std::vector<view::Node> content) {
    return {.id = std::move(id),
            .width = width,
            .content = view::Stack{.alignment = view::Stack::Alignment::centre,
                                   .spacing = 16,
                                   .padding = padding,
                                   .children = std::move(content)}};
}

view::Node centred(std::string id, std::string words, view::Text::Style style) {
    return {.id = std::move(id),
            .content = view::Text{.text = std::move(words),
                                  .style = style,
                                  .isSecondary = style == view::Text::Style::caption,
                                  .isCentred = true}};
}

view::Node buttons(std::string id, std::vector<view::Node> children) {
    view::Node row = view::row(std::move(id), std::move(children));
    row.width = width - 2 * padding;
    return row;
}

view::Node backButton(bool canGoBack, std::function<void()> back) {
    view::Node node = view::button(
        "setup:back",
        {.title = "Back", .shortcut = {.key = view::Shortcut::Key::leftArrow}, .press = std::move(back)});
    node.isEnabled = canGoBack;
    return node;
}

view::Node primaryButton(std::string id, std::string title, std::function<void()> press) {
    return view::button(std::move(id), {.title = std::move(title),
                                        .style = view::Button::Style::primary,
                                        .shortcut = {.key = view::Shortcut::Key::enter},
                                        .press = std::move(press)});
}

}  // namespace velko::SetupFrame
