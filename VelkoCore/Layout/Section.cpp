#include "VelkoCore/Layout/Section.h"

#include <algorithm>

namespace velko {

namespace {

template <class Value, std::size_t count>
std::optional<Value> named(const std::array<Value, count>& values, std::string_view wanted) noexcept {
    const auto* const found =
        std::ranges::find_if(values, [&](Value value) { return name(value) == wanted; });
    return found == values.end() ? std::nullopt : std::optional{*found};
}

}  // namespace

std::string_view name(Section section) noexcept {
    switch (section) {
        case Section::bar: return "bar";
        case Section::tucked: return "tucked";
        case Section::buried: return "buried";
    }
    return {};
}

std::string_view name(RevealStyle style) noexcept {
    switch (style) {
        case RevealStyle::inline_: return "inline";
        case RevealStyle::shelf: return "shelf";
    }
    return {};
}

std::optional<Section> sectionNamed(std::string_view name) noexcept {
    return named(allSections, name);
}

std::optional<RevealStyle> revealStyleNamed(std::string_view name) noexcept {
    return named(std::array{RevealStyle::inline_, RevealStyle::shelf}, name);
}

std::int64_t RevealSettings::normalisedAutoTuck(std::int64_t seconds) noexcept {
    return seconds <= 0 ? 0 : std::clamp(seconds, shortestAutoTuck, longestAutoTuck);
}

}  // namespace velko
