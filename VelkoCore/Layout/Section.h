#pragma once

#include <array>
#include <cstdint>
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

/// How and for how long tucked icons are revealed.
struct RevealSettings {
    static constexpr std::int64_t shortestAutoTuck = 3;
    static constexpr std::int64_t longestAutoTuck = 30;

    std::int64_t autoTuckSeconds = 6;  ///< 0 (never) or 3 to 30
    RevealStyle notchedStyle = RevealStyle::shelf;
    RevealStyle otherStyle = RevealStyle::inline_;
    bool hover = false;

    bool operator==(const RevealSettings&) const = default;

    /// 0 for anything up to 0, else the nearest value from 3 to 30.
    [[nodiscard]] static std::int64_t normalisedAutoTuck(std::int64_t seconds) noexcept;
};

}  // namespace velko
