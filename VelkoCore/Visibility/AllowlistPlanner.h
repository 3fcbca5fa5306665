#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "VelkoCore/BundleID.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

/// Turns the layout, the reveal state and the apps in the menu bar into the plan for the system.
namespace velko::AllowlistPlanner {

/// The hosts of the system's own items, which are never hidden and never suggested, in ascending order.
inline constexpr std::array<std::string_view, 2> alwaysAllowed{"com.apple.MenuBarAgent",
                                                               "com.apple.systemuiserver"};

[[nodiscard]] constexpr bool isAlwaysAllowed(std::string_view bundleID) noexcept {
    return std::ranges::find(alwaysAllowed, bundleID) != alwaysAllowed.end();
}

/// The plan while the user looks for one app's icon: that app, Velko and the system's items.
[[nodiscard]] VisibilityPlan showMe(const BundleID& bundleID, const BundleID& ownBundleID);

/// What `plan` needs to know. All references are only read during the call.
struct Request {
    const Layout& layout;
    const RevealState& state;
    const BundleIDs& inventory;  ///< apps with icons in the menu bar now
    const BundleID& ownBundleID;
    const BundleIDs& shareKeep;  ///< apps that stay visible while the screen is shared
    RevealStyle style = RevealStyle::inline_;
    const BundleIDs& poppedOut;  ///< apps allowed besides the computed ones
    bool liveActivity = false;   ///< an iPhone Live Activity is showing, so everything is
};

/// The plan for a situation. O(n log n) in the number of apps; pure.
[[nodiscard]] VisibilityPlan plan(const Request& request);

}  // namespace velko::AllowlistPlanner
