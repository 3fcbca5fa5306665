#include "VelkoCore/Watching/ChangeDetector.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "VelkoCore/Time/Timing.h"

namespace velko {

namespace {

bool isSameLook(const ItemReading& before, const ItemReading& now) {
    // Widths that cannot be compared are no reason to pop out.
    return before.text == now.text && !(std::abs(now.width - before.width) >= Timing::popOutMinWidthChange);
}

}  // namespace

std::vector<BundleID> ChangeDetector::check(Look look) {
    std::vector<BundleID> changed;
    for (const auto& [bundleID, now] : look.apps) {
        if (hasChanged(bundleID, now) && !isCoolingDown(bundleID, look.at)) {
            lastPop_.insert_or_assign(bundleID, look.at);
            changed.push_back(bundleID);
        }
    }
    seen_ = std::move(look.apps);
    return changed;
}

bool ChangeDetector::hasChanged(const BundleID& bundleID, const Seen& now) const {
    const auto before = seen_.find(bundleID);
    if (before == seen_.end() || before->second.pid != now.pid ||
        before->second.items.size() != now.items.size()) {
        return false;
    }
    return !std::ranges::equal(before->second.items, now.items, isSameLook);
}

bool ChangeDetector::isCoolingDown(const BundleID& bundleID, Uptime at) const {
    const auto popped = lastPop_.find(bundleID);
    return popped != lastPop_.end() && at - popped->second < Timing::popOutCooldownSeconds;
}

}  // namespace velko
