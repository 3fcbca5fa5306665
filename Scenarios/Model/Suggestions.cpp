#include <algorithm>
#include <set>

#include "Scenarios/Model/Belief.h"
#include "VelkoCore/Time/Date.h"

// What the autopilot should say, once more.

namespace velko::scenarios::model {

namespace {

constexpr std::int64_t mebibyte = 1'048'576;

std::int64_t daysFrom(Date from, Date to) {
    return std::max<std::int64_t>(0, Calendar().dayDifference(from, to).value_or(0));
}

bool isCostly(const AppUsage& usage) {
    return usage.memoryBytes >= 400 * mebibyte || (usage.cpuPercent && *usage.cpuPercent >= 2);
}

std::int64_t idleDays(const Layout& layout, const BundleID& app, Date now, std::int64_t watched) {
    if (const auto clicked = layout.lastClicked.find(app); clicked != layout.lastClicked.end()) {
        return daysFrom(clicked->second, now);
    }
    const auto seen = layout.firstSeen.find(app);
    return seen == layout.firstSeen.end() ? watched : std::min(watched, daysFrom(seen->second, now));
}

/// On how many of the last seven days it was clicked.
std::size_t clickedDays(const Layout& layout, const BundleID& app, Date now) {
    std::set<Date> days;
    if (const auto clicks = layout.clickDays.find(app); clicks != layout.clickDays.end()) {
        for (const Date day : clicks->second) {
            const auto ago = Calendar().dayDifference(day, now);
            if (!ago || (*ago >= 0 && *ago < 7)) {
                days.insert(Calendar().startOfDay(day));
            }
        }
    }
    return days.size();
}

/// Where it should go, "quit", or nothing.
std::string adviceFor(const Belief& belief, const BundleID& app, const AppUsage* usage, Date now) {
    const Layout& layout = belief.layout;
    const std::int64_t watched = daysFrom(layout.autopilot.watchingSince.value_or(now), now);
    const std::int64_t idle = idleDays(layout, app, now, watched);
    const bool isWarm = watched >= 14;
    if (usage != nullptr && isCostly(*usage) && isWarm && idle >= 14) {
        return "quit";
    }
    const Section section = belief.sectionOf(app);
    if (section == Section::bar) {
        return isWarm && idle >= 14 ? "tucked" : "";
    }
    if (section == Section::tucked && isWarm && idle >= 30) {
        return "buried";
    }
    return clickedDays(layout, app, now) >= 3 ? "bar" : "";
}

}  // namespace

std::set<std::string> suggestionsFor(const Belief& belief, const std::map<BundleID, AppUsage>& usage,
                                     Date now) {
    const Layout& layout = belief.layout;
    std::set<std::string> result;
    if (!layout.autopilot.enabled || !layout.autopilot.watchingSince) {
        return result;
    }
    for (const BundleID& app : belief.present) {
        const bool isSystems = app == "com.apple.MenuBarAgent" || app == "com.apple.systemuiserver";
        const auto snooze = layout.autopilot.snoozedUntil.find(app);
        const bool isSnoozed = snooze != layout.autopilot.snoozedUntil.end() && snooze->second > now;
        if (isSystems || isSnoozed || belief.isWaiting(app) || layout.alwaysKeep.contains(app)) {
            continue;
        }
        const auto cost = usage.find(app);
        std::string advice = adviceFor(belief, app, cost == usage.end() ? nullptr : &cost->second, now);
        if (!advice.empty()) {
            result.insert(advice.insert(0, app + " "));
        }
    }
    return result;
}

bool isOfferTime(const Layout& layout, Date now) {
    const auto& autopilot = layout.autopilot;
    return autopilot.enabled && layout.hasCompletedSetup && !autopilot.offerPending &&
           (!autopilot.lastOffered || daysFrom(*autopilot.lastOffered, now) > 6);
}

}  // namespace velko::scenarios::model
