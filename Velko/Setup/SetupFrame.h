#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Velko/View/Node.h"

/// What the setup's steps share. Pure functions.
namespace velko::SetupFrame {

/// A step: its content from top to bottom, in a window that is as wide at every step.
[[nodiscard]] view::Node step(std::string id, std::vector<view::Node> content);

/// Words in the middle; as a caption they are paler too.
[[nodiscard]] view::Node centred(std::string id, std::string words,
                                 view::Text::Style style = view::Text::Style::body);

/// The buttons at the foot of a step, over its whole width.
[[nodiscard]] view::Node buttons(std::string id, std::vector<view::Node> children);

/// Goes back, also by the left arrow.
[[nodiscard]] view::Node backButton(bool canGoBack, std::function<void()> back);

/// Goes on, also by Enter.
[[nodiscard]] view::Node primaryButton(std::string id, std::string title, std::function<void()> press);

}  // namespace velko::SetupFrame
