#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "VelkoCore/BundleID.h"
#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

/// Something that the autopilot proposes for one app, and why.
struct TidySuggestion {
    struct MoveTo {
        Section section = Section::bar;
        bool operator==(const MoveTo&) const = default;
    };
    struct Quit {
        bool operator==(const Quit&) const = default;
    };
    using Change = std::variant<MoveTo, Quit>;

    /// Not clicked for so many days.
    struct Unused {
        std::int64_t days = 0;
        bool operator==(const Unused&) const = default;
    };
    /// Clicked on so many of the last seven days.
    struct UsedOften {
        std::int64_t days = 0;
        bool operator==(const UsedOften&) const = default;
    };
    /// Not clicked for so many days, and costly all the while.
    struct Heavy {
        std::int64_t days = 0;
        AppUsage usage;
        bool operator==(const Heavy&) const = default;
    };
    using Reason = std::variant<Unused, UsedOften, Heavy>;

    BundleID bundleID;
    Change change;
    Reason reason;

    bool operator==(const TidySuggestion&) const = default;
};

/// The line under a suggestion: "Gathering dust: not clicked in 20 days".
[[nodiscard]] std::string describe(const TidySuggestion::Reason& reason);

}  // namespace velko
