#pragma once

#include <map>
#include <string>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

/// What one menu-bar item looked like at a moment; compared over time to notice changes.
struct ItemReading {
    std::string text;  ///< title, description, help and value, joined with "|"
    double width = 0;  ///< in points; 0 when unknown

    bool operator==(const ItemReading&) const = default;
};

/// Notices that an app's icons show something else than a moment ago. A value; keeps the previous look at
/// each app and when each last popped out.
class ChangeDetector {
 public:
    /// One look at an app: its process, and its items in the engine's order.
    struct Seen {
        ProcessID pid = 0;
        std::vector<ItemReading> items;
    };

    /// One look at all apps.
    struct Look {
        std::map<BundleID, Seen> apps;  ///< apps that are left out count as new when they come back
        Uptime at{};
    };

    /// The apps that have changed since the previous call and may pop out now, in ascending order. What
    /// changes within the cool-down after a pop-out is let go. A process or a number of items that is not
    /// the previous one only starts a new baseline.
    [[nodiscard]] std::vector<BundleID> check(Look look);

 private:
    [[nodiscard]] bool hasChanged(const BundleID& bundleID, const Seen& now) const;
    [[nodiscard]] bool isCoolingDown(const BundleID& bundleID, Uptime at) const;

    std::map<BundleID, Seen> seen_;
    std::map<BundleID, Uptime> lastPop_;
};

}  // namespace velko
