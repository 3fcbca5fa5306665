#include "VelkoCore/Visibility/VisibilityPlan.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

namespace velko {

VisibilityPlan VisibilityPlan::allow(std::vector<BundleID> bundleIDs) {
    const auto notAscending = std::ranges::adjacent_find(bundleIDs, std::greater_equal{});
    if (notAscending != bundleIDs.end()) {
        std::ranges::sort(bundleIDs);
        const auto repeated = std::ranges::unique(bundleIDs);
        bundleIDs.erase(repeated.begin(), repeated.end());
    }
    VisibilityPlan plan;
    plan.allowed_ = std::move(bundleIDs);
    return plan;
}

bool VisibilityPlan::hides(const BundleID& bundleID) const noexcept {
    return allowed_ && !std::ranges::binary_search(*allowed_, bundleID);
}

std::string describe(const VisibilityPlan& plan) {
    const auto& allowed = plan.allowed();
    if (!allowed) {
        return "show all";
    }
    std::string text = "allow ";
    std::string_view separator;
    for (const BundleID& bundleID : *allowed) {
        text.append(separator).append(bundleID);
        separator = ", ";
    }
    return text;
}

}  // namespace velko
