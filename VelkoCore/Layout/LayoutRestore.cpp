#include <algorithm>
#include <iterator>
#include <ranges>

#include "VelkoCore/Layout/LayoutHistory.h"

// What comes back of an earlier layout.

namespace velko {

namespace {

/// Whether the app has come to this Mac since. One that only an import has named has not.
bool cameLater(const BundleID& app, const Layout& now, const Layout& earlier) {
    const bool wasKnown = earlier.sections.contains(app) || earlier.firstSeen.contains(app) ||
                          (earlier.seenApps && earlier.seenApps->contains(app));
    return !wasKnown && (now.firstSeen.contains(app) || now.isWaiting(app));
}

bool hadPlace(const Layout& layout, const BundleID& app) {
    return layout.sections.contains(app) && !layout.isWaiting(app);
}

void restorePlaces(Layout& result, const Layout& now, const Layout& earlier) {
    for (const BundleID& app : earlier.inbox) {
        result.sections.erase(app);
    }
    for (const auto& [app, section] : now.sections) {
        if (earlier.isWaiting(app) || cameLater(app, now, earlier)) {
            result.sections.insert_or_assign(app, section);
        }
    }
    result.inbox = now.inbox;
    std::erase_if(result.inbox, [&](const BundleID& app) { return hadPlace(earlier, app); });
    result.waitingGoneSince = now.waitingGoneSince;
    std::erase_if(result.waitingGoneSince, [&](const auto& gone) { return !result.isWaiting(gone.first); });
    result.moveWaiting();
}

/// What was learnt since stays. What is known no more, because the app was forgotten or the file was lost,
/// comes back.
void keepLearnt(Layout& result, const Layout& now, const Layout& earlier) {
    const auto merge = [](auto& into, const auto& newer, const auto& older) {
        into = newer;
        into.insert(older.begin(), older.end());
    };
    merge(result.lastClicked, now.lastClicked, earlier.lastClicked);
    merge(result.clickDays, now.clickDays, earlier.clickDays);
    merge(result.firstSeen, now.firstSeen, earlier.firstSeen);
    for (const BundleID& app : earlier.inbox) {
        if (!now.firstSeen.contains(app)) {
            result.firstSeen.erase(app);  // it went without an answer, so it comes again as new
        }
    }
    result.seenApps = now.seenApps;
    if (result.seenApps && earlier.seenApps) {
        std::erase_if(*result.seenApps, [&](const BundleID& app) {
            return !earlier.seenApps->contains(app) && !cameLater(app, now, earlier);
        });
        std::ranges::copy_if(*earlier.seenApps, std::inserter(*result.seenApps, result.seenApps->end()),
                             [&](const BundleID& app) { return !earlier.isWaiting(app); });
    }
    result.knownGraceUntil = now.knownGraceUntil;
    result.quietUntil = now.quietUntil;
    result.autopilot = now.autopilot;
    result.autopilot.enabled = earlier.autopilot.enabled;
    if (!now.autopilot.watchingSince) {
        result.autopilot.watchingSince = earlier.autopilot.watchingSince;
    }
    if (!now.autopilot.lastOffered) {
        result.autopilot.lastOffered = earlier.autopilot.lastOffered;
    }
}

}  // namespace

// It begins with the earlier layout, so that a preference that is added some day is restored too.
Layout restored(const Layout& now, const Layout& earlier) {
    Layout result = earlier;
    result.version = now.version;
    restorePlaces(result, now, earlier);
    keepLearnt(result, now, earlier);
    result.hasCompletedSetup = now.hasCompletedSetup || earlier.hasCompletedSetup;
    result.setupPutOff = now.setupPutOff;
    return result;
}

RestoredChanges changesOfRestoring(const Layout& now, const Layout& earlier) {
    Layout then = restored(now, earlier);
    RestoredChanges changes;
    BundleIDs apps;
    std::ranges::copy(now.sections | std::views::keys, std::inserter(apps, apps.end()));
    std::ranges::copy(then.sections | std::views::keys, std::inserter(apps, apps.end()));
    for (const BundleID& app : apps) {
        if (now.section(app) != then.section(app)) {
            changes.moves.push_back({.bundleID = app, .section = then.section(app)});
        }
    }
    keepLearnt(then, now, now);
    then.autopilot.enabled = earlier.autopilot.enabled;
    then.sections = now.sections;
    then.inbox = now.inbox;
    then.waitingGoneSince = now.waitingGoneSince;
    changes.settings = then != now;
    return changes;
}

}  // namespace velko
