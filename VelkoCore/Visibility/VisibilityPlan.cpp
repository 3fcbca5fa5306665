#include "VelkoCore/Visibility/VisibilityPlan.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Visibility/RevealState.h"

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

namespace {

/// Identifiers gathered by reference, so that each one is copied once, into the finished plan.
using References = std::vector<std::string_view>;

void append(References& references, const auto& bundleIDs) {
    references.insert(references.end(), bundleIDs.begin(), bundleIDs.end());
}

VisibilityPlan planOf(References references) {
    std::ranges::sort(references);
    const auto repeated = std::ranges::unique(references);
    return VisibilityPlan::allow(std::vector<BundleID>(references.begin(), repeated.begin()));
}

/// Calls `visit` with every app that is in the menu bar or in the layout, once, and with its section.
template <class Visit>
void forEachCandidate(const Layout& layout, const BundleIDs& inventory, Visit visit) {
    auto placed = layout.sections.begin();
    for (const BundleID& present : inventory) {
        while (placed != layout.sections.end() && placed->first < present) {
            visit(placed->first, placed->second);
            ++placed;
        }
        if (placed != layout.sections.end() && placed->first == present) {
            visit(placed->first, placed->second);
            ++placed;
        } else {
            visit(present, layout.newIconDefault);
        }
    }
    for (; placed != layout.sections.end(); ++placed) {
        visit(placed->first, placed->second);
    }
}

VisibilityPlan planForSections(const AllowlistPlanner::Request& request, bool showTucked) {
    References visible;
    visible.reserve(request.inventory.size() + request.layout.sections.size() + request.poppedOut.size() +
                    AllowlistPlanner::alwaysAllowed.size() + 1);
    bool hidesNothing = true;
    forEachCandidate(request.layout, request.inventory, [&](const BundleID& bundleID, Section section) {
        if (section == Section::bar || (section == Section::tucked && showTucked)) {
            visible.push_back(bundleID);
        } else if (!AllowlistPlanner::isAlwaysAllowed(bundleID)) {
            hidesNothing = false;
        }
    });
    if (hidesNothing) {
        return VisibilityPlan::showAll();
    }
    append(visible, request.poppedOut);
    append(visible, AllowlistPlanner::alwaysAllowed);
    visible.push_back(request.ownBundleID);
    return planOf(std::move(visible));
}

VisibilityPlan planForSharedScreen(const AllowlistPlanner::Request& request) {
    References visible;
    append(visible, AllowlistPlanner::alwaysAllowed);
    append(visible, request.shareKeep);
    visible.push_back(request.ownBundleID);
    return planOf(std::move(visible));
}

VisibilityPlan planWithPeek(const VisibilityPlan& base, const BundleID& bundleID) {
    const auto& allowed = base.allowed();
    if (!allowed) {
        return base;
    }
    std::vector<BundleID> bundleIDs = *allowed;
    const auto place = std::ranges::lower_bound(bundleIDs, bundleID);
    if (place == bundleIDs.end() || *place != bundleID) {
        bundleIDs.insert(place, bundleID);
    }
    return VisibilityPlan::allow(std::move(bundleIDs));
}

}  // namespace

VisibilityPlan AllowlistPlanner::showMe(const BundleID& bundleID, const BundleID& ownBundleID) {
    References visible{bundleID, ownBundleID};
    append(visible, alwaysAllowed);
    return planOf(std::move(visible));
}

VisibilityPlan AllowlistPlanner::plan(const Request& request) {
    if (request.state.asShareSafe() != nullptr) {
        return planForSharedScreen(request);
    }
    if (request.liveActivity) {
        return VisibilityPlan::showAll();
    }
    if (const auto* peek = request.state.asPeeking()) {
        const Request ofBase{.layout = request.layout,
                             .state = peek->base,
                             .inventory = request.inventory,
                             .ownBundleID = request.ownBundleID,
                             .shareKeep = request.shareKeep,
                             .style = request.style,
                             .poppedOut = request.poppedOut,
                             .liveActivity = false};
        return planWithPeek(plan(ofBase), peek->bundleID);
    }
    // In the shelf style, tucked apps come out in the shelf, and the bar stays as it is.
    const bool inBar = request.style == RevealStyle::inline_;
    if (inBar && std::holds_alternative<RevealState::RevealedWithBuried>(request.state.value())) {
        return VisibilityPlan::showAll();
    }
    return planForSections(request, inBar && request.state.isRevealed());
}

}  // namespace velko
