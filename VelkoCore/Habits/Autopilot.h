#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

struct Layout;

/// What the weekly autopilot remembers between runs.
struct AutopilotState {
    bool enabled = true;
    std::optional<Date> watchingSince = {};  ///< absent until clicks are first watched
    std::optional<Date> lastOffered = {};
    bool offerPending = false;
    std::map<BundleID, Date> snoozedUntil = {};

    /// Notes when clicks were first watched.
    void startWatchingIfNeeded(Date now) { watchingSince = watchingSince.value_or(now); }

    bool operator==(const AutopilotState&) const = default;
};

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

/// Keeps the sorting fresh: what gathers dust moves out of the way, what is clicked a lot comes into the
/// bar, what idles and costs a lot may quit. Pure; it only proposes.
namespace Autopilot {

inline constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();

struct SuggestionsRequest {
    const Layout& layout;
    const BundleIDs& running;  ///< the apps to look at
    const std::map<BundleID, AppUsage>& usage;
    Date now;
    Calendar calendar;
    std::size_t atMost = noLimit;  ///< that many suggestions, the first ones
};

/// At most one suggestion per app, in ascending order of the apps. None until clicks are watched. Does
/// not ask whether the autopilot is switched on.
[[nodiscard]] std::vector<TidySuggestion> suggestions(const SuggestionsRequest& request);

struct OfferRequest {
    const Layout& layout;
    std::size_t suggestionCount;
    Date now;
    Calendar calendar;
};

/// Whether it is time to offer the suggestions: something to offer, no offer still open, and none within
/// the last week.
[[nodiscard]] bool isOfferDue(const OfferRequest& request);

}  // namespace Autopilot

}  // namespace velko
