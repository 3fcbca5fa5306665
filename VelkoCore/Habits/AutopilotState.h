#pragma once

#include <map>
#include <optional>

#include "VelkoCore/BundleID.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

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

}  // namespace velko
