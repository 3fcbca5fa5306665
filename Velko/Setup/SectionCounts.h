#pragma once

#include <cstddef>
#include <string>

#include "VelkoCore/Layout/Section.h"

namespace velko {

/// How many apps go where.
struct SectionCounts {
    std::size_t bar = 0;
    std::size_t tucked = 0;
    std::size_t buried = 0;

    void add(Section section) noexcept;
    [[nodiscard]] std::size_t all() const noexcept { return bar + tucked + buried; }
};

/// The counts in words: "3 in the bar, 5 tucked, 1 buried".
[[nodiscard]] std::string describe(const SectionCounts& counts);

/// "1 app", "5 apps".
[[nodiscard]] std::string appsInWords(std::size_t count);

}  // namespace velko
