#include "Velko/Setup/SetupFrame.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Velko/App/Health.h"
#include "Velko/View/Node.h"

namespace velko::SetupFrame {

namespace {

constexpr double padding = 28;
constexpr double height = 490;  // enough for the step that has most in it

view::Node footRow(Foot foot) {
    std::vector<view::Node> children = std::move(foot.left);
    children.push_back(view::spacer("setup:gap"));
    std::ranges::move(foot.right, std::back_inserter(children));
    view::Node row = view::row("setup:foot", std::move(children));
    row.width = contentWidth;
    return row;
}

}  // namespace

view::Node step(std::string id, std::vector<view::Node> content, Foot foot) {
    content.push_back(view::spacer("setup:room"));
    content.push_back(footRow(std::move(foot)));
    return {.id = std::move(id),
            .width = contentWidth + 2 * padding,
            .minHeight = height,
            .content = view::Stack{.alignment = view::Stack::Alignment::centre,
                                   .spacing = 16,
                                   .padding = padding,
                                   .children = std::move(content)}};
}

view::Node headSymbol(std::string id, std::string name) {
    return {.id = std::move(id),
            .content = view::Symbol{.name = std::move(name), .points = 56, .ink = view::Ink::accent}};
}

view::Node centred(std::string id, std::string words, view::Text::Style style) {
    return {.id = std::move(id),
            .content = view::Text{.text = std::move(words),
                                  .style = style,
                                  .isSecondary = style == view::Text::Style::caption,
                                  .isCentred = true}};
}

std::vector<view::Node> backButton(bool canGoBack, std::function<void()> back) {
    if (!canGoBack) {
        return {};
    }
    return {view::button(
        "setup:back",
        {.title = "Back", .shortcut = {.key = view::Shortcut::Key::leftArrow}, .press = std::move(back)})};
}

view::Node primaryButton(std::string id, std::string title, std::function<void()> press) {
    return view::button(std::move(id), {.title = std::move(title),
                                        .style = view::Button::Style::primary,
                                        .shortcut = {.key = view::Shortcut::Key::enter},
                                        .press = std::move(press)});
}

view::Node keyButton(std::string id, std::string title, char key, std::function<void()> press) {
    return view::button(std::move(id), {.title = std::move(title),
                                        .shortcut = {.key = view::Shortcut::Key::character, .character = key},
                                        .press = std::move(press)});
}

view::Node notice(std::string id, std::string words, std::vector<view::Node> remedies) {
    std::vector<view::Node> children{
        {.id = id + ":mark",
         .content =
             view::Symbol{.name = "exclamationmark.triangle", .points = 16, .ink = view::Ink::warning}},
        view::text(id + ":what", std::move(words))};
    std::ranges::move(remedies, std::back_inserter(children));
    return view::row(std::move(id), std::move(children));
}

view::Node permissionButton(std::function<void()> open) {
    return primaryButton("permission:open", openPermissionTitle, std::move(open));
}

}  // namespace velko::SetupFrame

namespace velko {

void SectionCounts::add(Section section) noexcept {
    switch (section) {
        case Section::bar: ++bar; break;
        case Section::tucked: ++tucked; break;
        case Section::buried: ++buried; break;
    }
}

std::string describe(const SectionCounts& counts) {
    return std::to_string(counts.bar) + " in the bar, " + std::to_string(counts.tucked) + " tucked, " +
           std::to_string(counts.buried) + " buried";
}

}  // namespace velko
