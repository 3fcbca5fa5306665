#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace velko {

/// Where an app's icons belong, listed from the most to the least visible.
enum class Section {
    bar,     ///< always on display
    tucked,  ///< behind the broom; one click brings them back
    buried,  ///< shown only on request
};

inline constexpr std::array allSections{Section::bar, Section::tucked, Section::buried};

/// How tucked icons come back.
enum class RevealStyle {
    inline_,  ///< in the menu bar itself
    shelf,    ///< in a panel under the menu bar
};

/// The word that files and log lines use: "bar", "tucked" or "buried".
[[nodiscard]] std::string_view name(Section section) noexcept;

/// The word that files use: "inline" or "shelf".
[[nodiscard]] std::string_view name(RevealStyle style) noexcept;

/// The section or style with that exact name, or nothing.
[[nodiscard]] std::optional<Section> sectionNamed(std::string_view name) noexcept;
[[nodiscard]] std::optional<RevealStyle> revealStyleNamed(std::string_view name) noexcept;

}  // namespace velko
