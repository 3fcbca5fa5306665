#pragma once

#include <optional>
#include <vector>

#include "VelkoCore/BundleID.h"

namespace velko {

/// Which apps' icons the system may show: everything, or those of a list.
class VisibilityPlan {
 public:
    /// Hides nothing.
    [[nodiscard]] static VisibilityPlan showAll() noexcept { return VisibilityPlan{}; }

    /// Shows only the given apps. The list is sorted and freed of duplicates, so that plans for the same
    /// situation compare equal. An empty list is still a list: it hides every app.
    [[nodiscard]] static VisibilityPlan allow(std::vector<BundleID> bundleIDs);

    [[nodiscard]] bool isShowAll() const noexcept { return !allowed_; }

    /// The apps that stay visible, ascending; nothing when everything does.
    [[nodiscard]] const std::optional<std::vector<BundleID>>& allowed() const noexcept { return allowed_; }

    /// Whether an app's icons are hidden while this plan is in force.
    [[nodiscard]] bool hides(const BundleID& bundleID) const noexcept;

    bool operator==(const VisibilityPlan&) const = default;

 private:
    std::optional<std::vector<BundleID>> allowed_;
};

/// "allow a, b, c" or "show all", as the log says it.
[[nodiscard]] std::string describe(const VisibilityPlan& plan);

}  // namespace velko
