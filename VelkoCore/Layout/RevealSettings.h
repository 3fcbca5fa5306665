#pragma once

#include <cstdint>

#include "VelkoCore/Layout/Section.h"

namespace velko {

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
