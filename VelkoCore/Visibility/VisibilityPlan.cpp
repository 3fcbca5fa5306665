#include "VelkoCore/Visibility/VisibilityPlan.h"

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Visibility/RevealState.h"

namespace velko {

VisibilityPlan VisibilityPlan::allowAscending(std::vector<BundleID> bundleIDs) {
    VisibilityPlan plan;
    plan.allowed_ = std::move(bundleIDs);
    return plan;
}

VisibilityPlan VisibilityPlan::allow(std::vector<BundleID> bundleIDs) {
    std::ranges::sort(bundleIDs);
    const auto repeated = std::ranges::unique(bundleIDs);
    bundleIDs.erase(repeated.begin(), repeated.end());
    return allowAscending(std::move(bundleIDs));
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

/// Identifiers gathered by reference, so that each one is copied once, into the finished plan. A few need no
/// memory of their own.
class Room {
 public:
    [[nodiscard]] std::pmr::memory_resource* get() noexcept { return &resource_; }

 private:
    std::array<std::byte, 4096> few_;
    std::pmr::monotonic_buffer_resource resource_{few_.data(), few_.size()};
};
using References = std::pmr::vector<std::string_view>;

void append(References& references, const auto& bundleIDs) {
    references.insert(references.end(), bundleIDs.begin(), bundleIDs.end());
}

void sortOnce(References& references) {
    std::ranges::sort(references);
    const auto repeated = std::ranges::unique(references);
    references.erase(repeated.begin(), repeated.end());
}

/// Calls `visit` with every app that is in the menu bar or in the layout, once, ascending and with its
/// section.
template <class Visit>
void forEachCandidate(const Layout& layout, const BundleIDs& inventory, Visit visit) {
    auto placed = layout.sections.begin();
    for (const BundleID& present : inventory) {
        auto order = std::strong_ordering::greater;
        while (placed != layout.sections.end() && (order = placed->first <=> present) < 0) {
            visit(placed->first, placed->second);
            ++placed;
        }
        if (placed != layout.sections.end() && order == 0) {
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

/// Both lists as one, ascending and without duplicates, as each of them is. The others are few: looking for
/// their places costs less than comparing them with everybody.
std::vector<BundleID> merged(const References& many, const References& others) {
    std::vector<BundleID> all;
    all.reserve(many.size() + others.size());
    auto next = many.begin();
    for (const std::string_view other : others) {
        const auto place = std::lower_bound(next, many.end(), other);
        all.insert(all.end(), next, place);
        all.emplace_back(other);
        next = place + (place != many.end() && *place == other ? 1 : 0);
    }
    all.insert(all.end(), next, many.end());
    return all;
}

/// The plan of what a section shows and of `others`, which show whatever their section.
VisibilityPlan planForSections(const AllowlistPlanner::Request& request, bool showTucked,
                               References& others) {
    append(others, request.poppedOut);
    append(others, AllowlistPlanner::alwaysAllowed);
    others.push_back(request.ownBundleID);
    sortOnce(others);
    References visible(others.get_allocator());
    visible.reserve(request.layout.sections.size() + request.inventory.size());
    bool hidesNothing = true;
    forEachCandidate(request.layout, request.inventory, [&](const BundleID& bundleID, Section section) {
        if (section == Section::bar || (section == Section::tucked && showTucked)) {
            visible.push_back(bundleID);
        } else if (hidesNothing && !AllowlistPlanner::isAlwaysAllowed(bundleID)) {
            hidesNothing = false;
        }
    });
    return hidesNothing ? VisibilityPlan::showAll() : VisibilityPlan::allowAscending(merged(visible, others));
}

VisibilityPlan planOf(References& references) {
    sortOnce(references);
    return VisibilityPlan::allowAscending({references.begin(), references.end()});
}

VisibilityPlan planForSharedScreen(const AllowlistPlanner::Request& request, References& visible) {
    append(visible, AllowlistPlanner::alwaysAllowed);
    append(visible, request.shareKeep);
    visible.push_back(request.ownBundleID);
    return planOf(visible);
}

}  // namespace

VisibilityPlan AllowlistPlanner::showMe(const BundleID& bundleID, const BundleID& ownBundleID) {
    Room room;
    References visible({bundleID, ownBundleID}, room.get());
    append(visible, alwaysAllowed);
    return planOf(visible);
}

VisibilityPlan AllowlistPlanner::plan(const Request& request) {
    const RevealState* state = &request.state;
    if ((request.liveActivity || request.hidesNothing) && state->asShareSafe() == nullptr) {
        return VisibilityPlan::showAll();
    }
    Room room;
    References peeking(room.get());
    for (const auto* peek = state->asPeeking(); peek != nullptr; peek = state->asPeeking()) {
        peeking.push_back(peek->bundleID);
        state = &peek->base;
    }
    if (state->asShareSafe() != nullptr) {
        return planForSharedScreen(request, peeking);
    }
    // In the shelf style, tucked apps come out in the shelf, and the bar stays as it is.
    const bool inBar = request.style == RevealStyle::inline_;
    if (inBar && std::holds_alternative<RevealState::RevealedWithBuried>(state->value())) {
        return VisibilityPlan::showAll();
    }
    return planForSections(request, inBar && state->isRevealed(), peeking);
}

}  // namespace velko
