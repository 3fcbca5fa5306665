#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "VelkoCore/BundleID.h"
#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Sorting/TidySuggestion.h"
#include "VelkoCore/Time/Calendar.h"
#include "VelkoCore/Time/Date.h"

/// Keeps the sorting fresh: what gathers dust moves out of the way, what is clicked a lot comes into the
/// bar, what idles and costs a lot may quit. Pure; it only proposes.
namespace velko::Autopilot {

struct SuggestionsRequest {
    const Layout& layout;
    const BundleIDs& running;  ///< the apps to look at
    const std::map<BundleID, AppUsage>& usage;
    Date now;
    Calendar calendar;
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

}  // namespace velko::Autopilot
