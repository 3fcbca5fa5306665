#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Velko/View/Node.h"

/// What the setup's steps share. Pure functions.
namespace velko::SetupFrame {

inline constexpr double contentWidth = 464;  ///< of everything within a step
inline constexpr double columnWidth = 148;   ///< of each of three columns

/// The buttons at the foot of a step, from its left end and from its right end.
struct Foot {
    std::vector<view::Node> left{};
    std::vector<view::Node> right{};
};

/// A step: its content from top to bottom, in a window that is as wide and as high at every step.
[[nodiscard]] view::Node step(std::string id, std::vector<view::Node> content, Foot foot);

/// A large symbol at the head of a step.
[[nodiscard]] view::Node headSymbol(std::string id, std::string name);

/// Words in the middle; as a caption they are paler too.
[[nodiscard]] view::Node centred(std::string id, std::string words,
                                 view::Text::Style style = view::Text::Style::body);

/// Goes back, also by the left arrow; nothing where that leads nowhere.
[[nodiscard]] std::vector<view::Node> backButton(bool canGoBack, std::function<void()> back);

/// Goes on, also by Enter.
[[nodiscard]] view::Node primaryButton(std::string id, std::string title, std::function<void()> press);

/// Opens the page of the system's settings on which the permission is given, also by Enter.
[[nodiscard]] view::Node permissionButton(std::function<void()> open);

}  // namespace velko::SetupFrame
