#include "VelkoCore/Layout/Layout.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <utility>

#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Layout/Switches.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

namespace velko {

Section Layout::section(const BundleID& bundleID) const {
    const auto entry = sections.find(bundleID);
    return entry == sections.end() ? newIconDefault : entry->second;
}

bool Layout::isWaiting(const BundleID& bundleID) const {
    return std::ranges::find(inbox, bundleID) != inbox.end();
}

void Layout::place(const BundleID& bundleID, Section section) {
    sections.insert_or_assign(bundleID, section);
    std::erase(inbox, bundleID);
    waitingGoneSince.erase(bundleID);
}

void Layout::moveWaiting() {
    for (const BundleID& bundleID : inbox) {
        sections.insert_or_assign(bundleID, waitingSection());
    }
}

bool Layout::mayPopOut(const BundleID& bundleID, Date now) const {
    return popOutOnChange && !neverPopOut.contains(bundleID) && !isQuiet(bundleID, now);
}

bool Layout::isQuiet(const BundleID& bundleID, Date now) const {
    const auto until = quietUntil.find(bundleID);
    return until != quietUntil.end() && now < until->second;
}

void Layout::quieten(const BundleID& bundleID, Date now, Calendar calendar) {
    std::erase_if(quietUntil, [&](const auto& entry) { return entry.second <= now; });
    quietUntil.insert_or_assign(bundleID, calendar.addingDays(1, calendar.startOfDay(now)));
}

void Layout::setPopsOut(const BundleID& bundleID, bool popsOut) {
    if (popsOut) {
        neverPopOut.erase(bundleID);
    } else {
        neverPopOut.insert(bundleID);
    }
    quietUntil.erase(bundleID);
}

std::int64_t Layout::normalisedPresenting(std::int64_t minutes) noexcept {
    return std::clamp<std::int64_t>(minutes, 0, longestPresenting);
}

void Layout::forget(const BundleIDs& apps) {
    for (const BundleID& app : apps) {
        sections.erase(app);
        lastClicked.erase(app);
        firstSeen.erase(app);
        clickDays.erase(app);
        waitingGoneSince.erase(app);
        alwaysKeep.erase(app);
        autopilot.snoozedUntil.erase(app);
        neverPopOut.erase(app);
        quietUntil.erase(app);
        shareKeep.erase(app);
        if (seenApps) {
            seenApps->erase(app);
        }
    }
    std::erase_if(inbox, [&](const BundleID& app) { return apps.contains(app); });
}

void Layout::recordClick(const BundleID& bundleID, Date at, Calendar calendar) {
    lastClicked.insert_or_assign(bundleID, at);
    std::vector<Date>& days = clickDays[bundleID];
    const Date today = calendar.startOfDay(at);
    if (std::ranges::find(days, today) == days.end()) {
        days.push_back(today);
    }
    std::erase_if(days, [&](Date day) { return calendar.daysBetween(day, at) >= Timing::clickDaysKept; });
}

void Layout::accept(const TidySuggestion& suggestion) {
    if (const auto* move = std::get_if<TidySuggestion::MoveTo>(&suggestion.change)) {
        place(suggestion.bundleID, move->section);
    }
}

void Layout::snooze(const BundleID& bundleID, Date now, Calendar calendar) {
    autopilot.snoozedUntil.insert_or_assign(bundleID, calendar.addingDays(Timing::autopilotSnoozeDays, now));
}

void Layout::apply(const LayoutExport& other) {
    if (!seenApps) {
        seenApps.emplace();
    }
    for (const auto& [bundleID, section] : other.sections) {
        place(bundleID, section);
        seenApps->insert(bundleID);
    }
    alwaysKeep.insert(other.alwaysKeep.begin(), other.alwaysKeep.end());
    if (other.neverPopOut) {
        neverPopOut.insert(other.neverPopOut->begin(), other.neverPopOut->end());
    }
    if (other.shareKeep) {
        shareKeep.insert(other.shareKeep->begin(), other.shareKeep->end());
    }
    presentingMinutes = normalisedPresenting(other.presentingMinutes.value_or(presentingMinutes));
    if (other.showAllFromWidth && *other.showAllFromWidth > 0) {
        showAllFromWidth = other.showAllFromWidth;
    }
    reveal = other.reveal;
    newIconDefault = other.newIconDefault;
    const Section waitedIn = waitingSection();
    Switches::copy(other, *this);
    if (waitingSection() != waitedIn) {
        moveWaiting();
    }
    hasCompletedSetup = true;
}

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
        knownGraceUntil = admission.now + Timing::inboxUpgradeGraceSeconds;
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
        if (isUnseen && asks && !sections.contains(bundleID) && !isWaiting(bundleID)) {
            newcomers.push_back(bundleID);
        }
    }
    for (const BundleID& bundleID : newcomers) {
        place(bundleID, waitingSection());
        inbox.push_back(bundleID);
    }
    return newcomers;
}

std::vector<BundleID> Layout::letAbsentGo(const Admission& admission) {
    std::vector<BundleID> gone;
    for (const BundleID& bundleID : inbox) {
        if (admission.present.contains(bundleID)) {
            waitingGoneSince.erase(bundleID);
            continue;
        }
        const Date since = waitingGoneSince.try_emplace(bundleID, admission.now).first->second;
        if (admission.now - since >= Timing::inboxGoneSeconds) {
            gone.push_back(bundleID);
        }
    }
    std::ranges::sort(gone);
    for (const BundleID& app : gone) {
        std::erase(inbox, app);
        sections.erase(app);
        firstSeen.erase(app);
        waitingGoneSince.erase(app);
        if (seenApps) {
            seenApps->erase(app);
        }
    }
    return gone;
}

namespace {

/// Replaces dates that lie more than a day after the latest date that is possible for them.
class SettingBack {
 public:
    void operator()(Date& date, Date furthest) {
        if (date - furthest > std::chrono::days(1)) {
            date = furthest;
            any_ = true;
        }
    }
    void operator()(std::optional<Date>& date, Date furthest) {
        if (date) {
            (*this)(*date, furthest);
        }
    }
    void operator()(std::map<BundleID, Date>& dates, Date furthest) {
        for (auto& [bundleID, date] : dates) {
            (*this)(date, furthest);
        }
    }

    [[nodiscard]] bool any() const noexcept { return any_; }

 private:
    bool any_ = false;
};

}  // namespace

bool Layout::setBackDates(Date now, Calendar calendar) {
    SettingBack setBack;
    setBack(autopilot.lastOffered, now);
    setBack(autopilot.watchingSince, now);
    setBack(lastClicked, now);
    setBack(firstSeen, now);
    setBack(waitingGoneSince, now);
    setBack(setupPutOff, now);
    setBack(knownGraceUntil, now + Timing::inboxUpgradeGraceSeconds);
    setBack(autopilot.snoozedUntil, calendar.addingDays(Timing::autopilotSnoozeDays, now));
    const Date today = calendar.startOfDay(now);
    setBack(quietUntil, calendar.addingDays(1, today));
    for (auto& [bundleID, days] : clickDays) {
        for (Date& day : days) {
            setBack(day, today);
        }
        bool isThere = false;
        std::erase_if(days, [&](Date day) { return day == today && std::exchange(isThere, true); });
    }
    return setBack.any();
}

}  // namespace velko
