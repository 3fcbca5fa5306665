#include "Scenarios/Model/Expected.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "VelkoCore/Time/Date.h"

namespace velko::scenarios::model {

namespace {

constexpr std::array<std::string_view, 2> systemItems{"com.apple.MenuBarAgent", "com.apple.systemuiserver"};

}  // namespace

std::string nameOf(Section section) {
    return section == Section::bar ? "bar" : section == Section::tucked ? "tucked" : "buried";
}

Section sectionCalled(const std::string& name) {
    return name == "bar" ? Section::bar : name == "tucked" ? Section::tucked : Section::buried;
}

// What is out

std::string Out::text() const {
    if (isPresenting) {
        return "share-safe";
    }
    if (!opened.empty()) {
        return "opening " + opened + " (from " + Out{.reach = reach}.text() + ")";
    }
    switch (reach) {
        case Reach::barOnly: return "collapsed";
        case Reach::tuckedToo: return "revealed";
        case Reach::buriedToo: break;
    }
    return "revealed with buried";
}

Out Out::after(const std::string& event) const {
    if (isPresenting) {
        return event == "shareStopped" ? Out{.reach = reach} : *this;
    }
    if (event == "shareStarted") {
        return {.reach = reach, .isPresenting = true};
    }
    if (event.starts_with("peek ")) {
        return {.reach = reach, .opened = event.substr(5)};
    }
    if (event == "peekEnded") {
        return {.reach = reach};
    }
    if (!opened.empty()) {
        return event == "autoTuck" ? *this
                                   : Out();  // a click ends the opening, and tucks what was out before
    }
    if (event == "toggle") {
        return {.reach = isRevealed() ? Reach::barOnly : Reach::tuckedToo};
    }
    if (event == "toggleWithBuried") {
        return {.reach = reach == Reach::buriedToo ? Reach::barOnly : Reach::buriedToo};
    }
    return {};
}

// Who shows

Section Expected::sectionOf(const BundleID& app) const {
    const auto placed = layout.sections.find(app);
    return placed == layout.sections.end() ? layout.newIconDefault : placed->second;
}

bool Expected::isWaiting(const BundleID& app) const {
    return std::ranges::count(layout.inbox, app) > 0;
}

bool Expected::isOthers(const BundleID& app) const {
    return app != own && std::ranges::count(systemItems, app) == 0;
}

bool Expected::isAnyHideable() const {
    return std::ranges::any_of(
        present, [this](const BundleID& app) { return isOthers(app) && sectionOf(app) != Section::bar; });
}

bool Expected::isPlaceOut(Section section) const {
    if (section == Section::bar) {
        return true;
    }
    // Icons that are out on the shelf do not show in the bar.
    return section == Section::tucked && style == RevealStyle::inline_ && out.reach == Out::Reach::tuckedToo;
}

BundleIDs Expected::known() const {
    BundleIDs apps = present;
    for (const auto& [app, section] : layout.sections) {
        apps.insert(app);
    }
    return apps;
}

bool Expected::isEverythingOut() const {
    if (!isWell()) {
        return true;
    }
    if (alone || out.isPresenting) {
        return false;
    }
    if (isWide || (isActivityOn && !isActivityDismissed) ||
        (style == RevealStyle::inline_ && out.reach == Out::Reach::buriedToo)) {
        return true;
    }
    return std::ranges::all_of(known(), [this](const BundleID& app) {
        return std::ranges::count(systemItems, app) > 0 || isPlaceOut(sectionOf(app));
    });
}

std::optional<BundleIDs> Expected::shown() const {
    if (isEverythingOut()) {
        return std::nullopt;
    }
    BundleIDs apps(systemItems.begin(), systemItems.end());
    apps.insert(own);
    if (alone) {
        apps.insert(*alone);
        return apps;
    }
    if (out.isPresenting) {
        apps.insert(layout.shareKeep.begin(), layout.shareKeep.end());
        return apps;
    }
    for (const BundleID& app : known()) {
        if (isPlaceOut(sectionOf(app))) {
            apps.insert(app);
        }
    }
    if (layout.popOutOnChange) {
        for (const auto& [app, end] : popped) {
            apps.insert(app);
        }
    }
    if (!out.opened.empty()) {
        apps.insert(out.opened);
    }
    return apps;
}

std::string Expected::planText() const {
    const auto apps = shown();
    if (!apps) {
        return "show all";
    }
    std::string text = "allow ";
    for (const BundleID& app : *apps) {
        text += (text.size() > 6 ? ", " : "") + app;
    }
    return text;
}

void Expected::takeOwn(Layout found) {
    ownLayout = std::move(found);
    layout = managed.over(ownLayout);
}

void Expected::place(const BundleID& app, Section section) {
    layout.sections[app] = section;
    std::erase(layout.inbox, app);
}

// What the autopilot should say

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
std::string adviceFor(const Expected& expected, const BundleID& app, const AppUsage* usage, Date now) {
    const Layout& layout = expected.layout;
    const std::int64_t watched = daysFrom(layout.autopilot.watchingSince.value_or(now), now);
    const std::int64_t idle = idleDays(layout, app, now, watched);
    const bool isWarm = watched >= 14;
    if (usage != nullptr && isCostly(*usage) && isWarm && idle >= 14) {
        return "quit";
    }
    const Section section = expected.sectionOf(app);
    if (section == Section::bar) {
        return isWarm && idle >= 14 ? "tucked" : "";
    }
    if (section == Section::tucked && isWarm && idle >= 30) {
        return "buried";
    }
    return clickedDays(layout, app, now) >= 3 ? "bar" : "";
}

}  // namespace

std::set<std::string> suggestionsFor(const Expected& expected, const std::map<BundleID, AppUsage>& usage,
                                     Date now) {
    const Layout& layout = expected.layout;
    std::set<std::string> result;
    if (!layout.autopilot.enabled || !layout.autopilot.watchingSince) {
        return result;
    }
    for (const BundleID& app : expected.present) {
        const bool isSystems = app == "com.apple.MenuBarAgent" || app == "com.apple.systemuiserver";
        const auto snooze = layout.autopilot.snoozedUntil.find(app);
        const bool isSnoozed = snooze != layout.autopilot.snoozedUntil.end() && snooze->second > now;
        if (isSystems || isSnoozed || expected.isWaiting(app) || layout.alwaysKeep.contains(app)) {
            continue;
        }
        const auto cost = usage.find(app);
        std::string advice = adviceFor(expected, app, cost == usage.end() ? nullptr : &cost->second, now);
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
