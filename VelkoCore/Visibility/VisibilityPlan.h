#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

struct Layout;
class RevealState;

/// Which apps' icons the system may show: everything, or those of a list.
class VisibilityPlan {
 public:
    /// Hides nothing.
    [[nodiscard]] static VisibilityPlan showAll() noexcept { return VisibilityPlan{}; }

    /// Shows only the given apps. The list is sorted and freed of duplicates, so that plans for the same
    /// situation compare equal. An empty list is still a list: it hides every app.
    [[nodiscard]] static VisibilityPlan allow(const std::vector<BundleID>& bundleIDs);

    /// The same for a list that is ascending already and names nobody twice.
    [[nodiscard]] static VisibilityPlan allowAscending(std::span<const std::string_view> bundleIDs);

    [[nodiscard]] bool isShowAll() const noexcept { return !allowed_; }

    /// The apps that stay visible, ascending; nothing when everything does.
    [[nodiscard]] std::optional<std::vector<BundleID>> allowed() const;

    /// Whether an app's icons are hidden while this plan is in force.
    [[nodiscard]] bool hides(const BundleID& bundleID) const noexcept;

    bool operator==(const VisibilityPlan&) const = default;

 private:
    /// Identifiers, one after the other in a single piece of memory: plans are made and compared far more
    /// often than their lists are read.
    struct List {
        std::string text;
        std::vector<std::size_t> ends;  ///< of each identifier in `text`

        [[nodiscard]] std::string_view at(std::size_t index) const noexcept;
        bool operator==(const List&) const = default;
    };

    std::optional<List> allowed_;
};

/// "allow a, b, c" or "show all", as the log says it.
[[nodiscard]] std::string describe(const VisibilityPlan& plan);

/// Turns the layout, the reveal state and the apps in the menu bar into the plan for the system.
namespace AllowlistPlanner {

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
    bool hidesNothing = false;   ///< the user wants to see everything on this display
};

/// The plan for a situation. O(n) in the number of apps, which come sorted; pure.
[[nodiscard]] VisibilityPlan plan(const Request& request);

}  // namespace AllowlistPlanner

}  // namespace velko
