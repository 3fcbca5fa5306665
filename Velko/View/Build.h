#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Velko/View/Node.h"

/// Short ways to write the nodes that occur everywhere.
namespace velko::view {

[[nodiscard]] inline Node text(std::string id, std::string words, Text::Style style = Text::Style::body) {
    return {.id = std::move(id), .content = Text{.text = std::move(words), .style = style}};
}

/// What explains something, smaller and paler.
[[nodiscard]] inline Node explanation(std::string id, std::string words) {
    return {.id = std::move(id),
            .content = Text{.text = std::move(words), .style = Text::Style::caption, .isSecondary = true}};
}

[[nodiscard]] inline Node button(std::string id, Button button) {
    return {.id = std::move(id), .content = std::move(button)};
}

/// Children side by side, their middles on one line.
[[nodiscard]] inline Node row(std::string id, std::vector<Node> children) {
    return {.id = std::move(id),
            .content = Stack{.axis = Stack::Axis::row,
                             .alignment = Stack::Alignment::centre,
                             .children = std::move(children)}};
}

[[nodiscard]] inline Node column(std::string id, std::vector<Node> children, double spacing = 8) {
    return {.id = std::move(id), .content = Stack{.spacing = spacing, .children = std::move(children)}};
}

[[nodiscard]] inline Node spacer(std::string id) {
    return {.id = std::move(id), .content = Spacer{}};
}

}  // namespace velko::view
