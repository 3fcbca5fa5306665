#include <algorithm>
#include <chrono>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoCore/Visibility/AllowlistPlanner.h"

namespace velko {

namespace {

bool counts(const BundleID& bundleID, const BundleID& ownBundleID) {
    return bundleID != ownBundleID && !AllowlistPlanner::isAlwaysAllowed(bundleID);
}

/// The apps that an older build knew without saying so: sorted or waiting ones.
BundleIDs knownBefore(const Layout& layout, const BundleID& ownBundleID) {
    BundleIDs known(layout.inbox.begin(), layout.inbox.end());
    for (const auto& [bundleID, section] : layout.sections) {
        known.insert(bundleID);
    }
    std::erase_if(known, [&](const BundleID& bundleID) { return !counts(bundleID, ownBundleID); });
    return known;
}

}  // namespace

std::vector<BundleID> Layout::admit(const Admission& admission) {
    const bool isUpgrade = !seenApps;
    if (isUpgrade) {
        seenApps = knownBefore(*this, admission.ownBundleID);
        const auto grace = std::chrono::duration<double>(Timing::inboxUpgradeGraceSeconds);
        knownGraceUntil = admission.now + std::chrono::floor<std::chrono::seconds>(grace);
    }
    const bool inGrace = knownGraceUntil && admission.now < *knownGraceUntil;
    const bool asks = hasCompletedSetup && askAboutNewIcons && !isUpgrade && !inGrace;

    std::vector<BundleID> newcomers;
    for (const BundleID& bundleID : admission.present) {
        if (!counts(bundleID, admission.ownBundleID)) {
            continue;
        }
        const bool isUnseen = seenApps->insert(bundleID).second;
        if (isUnseen || isUpgrade) {
            firstSeen.try_emplace(bundleID, admission.now);
        }
        if (isUnseen && asks && !sections.contains(bundleID) && std::ranges::count(inbox, bundleID) == 0) {
            newcomers.push_back(bundleID);
        }
    }
    for (const BundleID& bundleID : newcomers) {
        place(bundleID, Section::tucked);
        inbox.push_back(bundleID);
    }
    return newcomers;
}

}  // namespace velko
