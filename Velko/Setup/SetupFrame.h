#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Section.h"

/// What the steps of the setup share. Pure functions.
namespace velko::SetupFrame {

inline constexpr double contentWidth = 548;  ///< points, of all content of a step
inline constexpr double columnWidth = 176;   ///< points, of each of three columns

/// The buttons at the bottom of a step, on its left and on its right.
struct Foot {
    std::vector<view::Node> left{};
    std::vector<view::Node> right{};
};

/// A step: its content from top to bottom. The window has the same size at every step.
[[nodiscard]] view::Node step(std::string id, std::vector<view::Node> content, Foot foot);

/// A large symbol at the top of a step.
[[nodiscard]] view::Node headSymbol(std::string id, std::string name);

/// A centred text. As a caption it is also paler.
[[nodiscard]] view::Node centred(std::string id, std::string words,
                                 view::Text::Style style = view::Text::Style::body);

/// A button that goes back, as the left arrow key does; nothing where there is no step before.
[[nodiscard]] std::vector<view::Node> backButton(bool canGoBack, std::function<void()> back);

/// A button that goes on, as Enter does.
[[nodiscard]] view::Node primaryButton(std::string id, std::string title, std::function<void()> press);

/// A button that the user can also press with the key of a character.
[[nodiscard]] view::Node keyButton(std::string id, std::string title, char key, std::function<void()> press);

/// Something that stands in the user's way, with what they can do about it, which may be nothing.
[[nodiscard]] view::Node notice(std::string id, std::string words, std::vector<view::Node> remedies);

/// A button that opens the page of the system's settings where the user gives the permission, as Enter does.
[[nodiscard]] view::Node permissionButton(std::function<void()> open);

}  // namespace velko::SetupFrame

namespace velko {

/// How many apps go to each section.
struct SectionCounts {
    std::size_t bar = 0;
    std::size_t tucked = 0;
    std::size_t buried = 0;

    void add(Section section) noexcept;
    [[nodiscard]] std::size_t all() const noexcept { return bar + tucked + buried; }
};

/// The counts in words: "3 in the bar, 5 tucked, 1 buried".
[[nodiscard]] std::string describe(const SectionCounts& counts);

}  // namespace velko
