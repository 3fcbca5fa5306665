#include "VelkoCore/Visibility/VisibilityPlan.h"

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <memory_resource>
#include <ranges>
#include <set>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Visibility/RevealState.h"

namespace velko {

std::string_view VisibilityPlan::List::at(std::size_t index) const noexcept {
    const std::size_t start = index == 0 ? 0 : ends[index - 1];
    return std::string_view(text).substr(start, ends[index] - start);
}

VisibilityPlan VisibilityPlan::allowAscending(std::span<const std::string_view> bundleIDs) {
    List list;
    std::size_t length = 0;
    for (const std::string_view bundleID : bundleIDs) {
        length += bundleID.size();
    }
    list.text.reserve(length);
    list.ends.reserve(bundleIDs.size());
    for (const std::string_view bundleID : bundleIDs) {
        list.ends.push_back(list.text.append(bundleID).size());
    }
    VisibilityPlan plan;
    plan.allowed_ = std::move(list);
    return plan;
}

VisibilityPlan VisibilityPlan::allow(const std::vector<BundleID>& bundleIDs) {
    const std::set<std::string_view> ascending(bundleIDs.begin(), bundleIDs.end());
    return allowAscending(std::vector(ascending.begin(), ascending.end()));
}

std::optional<std::vector<BundleID>> VisibilityPlan::allowed() const {
    if (!allowed_) {
        return std::nullopt;
    }
    std::vector<BundleID> bundleIDs;
    bundleIDs.reserve(allowed_->ends.size());
    for (std::size_t index = 0; index < allowed_->ends.size(); ++index) {
        bundleIDs.emplace_back(allowed_->at(index));
    }
    return bundleIDs;
}

bool VisibilityPlan::hides(const BundleID& bundleID) const noexcept {
    if (!allowed_) {
        return false;
    }
    const auto indices = std::views::iota(std::size_t{0}, allowed_->ends.size());
    return !std::ranges::binary_search(indices, std::string_view(bundleID), {},
                                       [this](std::size_t index) { return allowed_->at(index); });
}

std::string describe(const VisibilityPlan& plan) {
    const auto allowed = plan.allowed();
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

/// The apps that show, ascending and each once. They are kept by reference, so that each identifier is copied
/// once, into the finished plan. A few need no memory of their own.
class VisibleApps {
 public:
    /// Adds the apps that their section shows, while there are no others. Whether some app is hidden.
    bool addSections(const AllowlistPlanner::Request& request, bool showTucked) {
        apps_.reserve(request.layout.sections.size() + request.inventory.size() + fewMore);
        bool hides = false;
        forEachCandidate(request.layout, request.inventory, [&](const BundleID& app, Section section) {
            if (section == Section::bar || (section == Section::tucked && showTucked)) {
                apps_.push_back(app);
            } else if (!hides) {
                hides = !AllowlistPlanner::isAlwaysAllowed(app);
            }
        });
        return hides;
    }

    /// Others are few: looking for their places costs less than comparing them with everybody.
    void add(std::string_view app) {
        const auto place = std::ranges::lower_bound(apps_, app);
        if (place == apps_.end() || *place != app) {
            apps_.insert(place, app);
        }
    }
    void addAll(const auto& apps) {
        for (const std::string_view app : apps) {
            add(app);
        }
    }
    void addPeeking(const RevealState& state) {
        for (const auto* peek = state.asPeeking(); peek != nullptr; peek = peek->base.asPeeking()) {
            add(peek->bundleID);
        }
    }

    [[nodiscard]] VisibilityPlan plan() const { return VisibilityPlan::allowAscending(apps_); }

 private:
    static constexpr std::size_t fewMore = 8;

    std::array<std::byte, 4096> few_;
    std::pmr::monotonic_buffer_resource resource_{few_.data(), few_.size()};
    std::pmr::vector<std::string_view> apps_{&resource_};
};

/// What lies below the apps that peek.
const RevealState& baseOf(const RevealState& state) {
    const RevealState* base = &state;
    while (const auto* peek = base->asPeeking()) {
        base = &peek->base;
    }
    return *base;
}

}  // namespace

VisibilityPlan AllowlistPlanner::showMe(const BundleID& bundleID, const BundleID& ownBundleID) {
    VisibleApps visible;
    visible.add(bundleID);
    visible.add(ownBundleID);
    visible.addAll(alwaysAllowed);
    return visible.plan();
}

VisibilityPlan AllowlistPlanner::plan(const Request& request) {
    if ((request.liveActivity || request.hidesNothing) && request.state.asShareSafe() == nullptr) {
        return VisibilityPlan::showAll();
    }
    const RevealState& base = baseOf(request.state);
    VisibleApps visible;
    if (base.asShareSafe() != nullptr) {
        visible.addAll(request.shareKeep);
    } else {
        // In the shelf style, tucked apps come out in the shelf, and the bar stays as it is.
        const bool inBar = request.style == RevealStyle::inline_;
        const bool withBuried = std::holds_alternative<RevealState::RevealedWithBuried>(base.value());
        if ((inBar && withBuried) || !visible.addSections(request, inBar && base.isRevealed())) {
            return VisibilityPlan::showAll();
        }
        visible.addAll(request.poppedOut);
    }
    visible.addPeeking(request.state);
    visible.addAll(alwaysAllowed);
    visible.add(request.ownBundleID);
    return visible.plan();
}

}  // namespace velko
