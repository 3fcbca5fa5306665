#include "Velko/Flows/Questions.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Velko/App/Log.h"
#include "Velko/Apps/ChangeWords.h"
#include "Velko/Apps/ManagedWords.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/Beat.h"
#include "VelkoCore/Habits/Autopilot.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

AutopilotOffers::AutopilotOffers(FlowHost& host, const Platform& platform, Log& log,
                                 std::function<void(bool)> checked)
    : host_(host), platform_(platform), log_(log), checked_(std::move(checked)) {}

void AutopilotOffers::start(Beat& beat) {
    beat.add({.period = Timing::autopilotCheckInterval,
              .hasWork = [] { return true; },
              .run = [this] { check(); }});
}

void AutopilotOffers::heedClock() {
    Layout layout = host_.values().layout;
    if (layout.setBackDates(now(), {})) {
        log_.log("layout", "the clock was ahead: dates set back");
        host_.edit(Saving::soon, [&](Layout& mine) { mine = std::move(layout); });
    }
}

void AutopilotOffers::check() {
    heedClock();
    if (!host_.values().inventoryLoaded) {
        return;
    }
    settle();
    const std::size_t count = suggestions().size();
    const bool isDue = Autopilot::isOfferDue(
        {.layout = host_.values().layout, .suggestionCount = count, .now = now(), .calendar = {}});
    if (isDue) {
        host_.edit(Saving::nowUnlessBroken, [this](Layout& layout) {
            layout.autopilot.offerPending = true;
            layout.autopilot.lastOffered = now();
        });
        log_.log("autopilot",
                 "offering " + std::to_string(count) + (count == 1 ? " suggestion" : " suggestions"));
    }
    checked_(isDue);
}

void AutopilotOffers::clicksAreWatched() {
    // A layout that could not be read may know since when; the one in its place must not claim otherwise.
    if (host_.values().problems.layoutUnreadable || host_.values().layout.autopilot.watchingSince) {
        return;
    }
    host_.edit(Saving::nowUnlessBroken,
               [this](Layout& layout) { layout.autopilot.startWatchingIfNeeded(now()); });
    log_.log("autopilot", "click history started: suggestions begin in " +
                              std::to_string(Timing::autopilotWarmUpDays) + " days");
}

std::vector<TidySuggestion> AutopilotOffers::suggestions(std::size_t atMost) const {
    const AppValues& values = host_.values();
    if (!values.layout.autopilot.enabled) {
        return {};
    }
    BundleIDs running;
    for (const MenuBarItem& item : values.items) {
        running.insert(item.bundleID);
    }
    return Autopilot::suggestions({.layout = values.layout,
                                   .running = running,
                                   .usage = values.usage,
                                   .now = now(),
                                   .calendar = {},
                                   .atMost = atMost});
}

void AutopilotOffers::accept(const TidySuggestion& suggestion) {
    const BundleID bundleID = suggestion.bundleID;
    if (withoutManaged(host_.values(), {bundleID}, log_).empty()) {
        return;  // the organisation has placed it since it was suggested
    }
    const FlowHost::Edit change = [&](Layout& layout) {
        layout.accept(suggestion);
        layout.snooze(bundleID, now(), {});
    };
    if (const auto* const move = std::get_if<TidySuggestion::MoveTo>(&suggestion.change)) {
        host_.edit(ChangeWords::placed({.name = nameOf(bundleID)}, move->section), change);
        log_.log("autopilot", "accepted: " + bundleID + " -> " + std::string(name(move->section)));
        host_.apply({.reason = "autopilot"});
    } else {
        host_.edit(Saving::now, change);  // nobody can take back that an app has quit
        askToQuit(bundleID);
    }
    settle();
}

void AutopilotOffers::dismiss(const BundleID& bundleID) {
    host_.edit(ChangeWords::putOff(nameOf(bundleID)),
               [&](Layout& layout) { layout.snooze(bundleID, now(), {}); });
    log_.log("autopilot", "not now: " + bundleID);
    settle();
}

void AutopilotOffers::askAgain(const BundleID& bundleID) {
    host_.edit(ChangeWords::askedAgain(nameOf(bundleID)),
               [&](Layout& layout) { layout.autopilot.snoozedUntil.erase(bundleID); });
    log_.log("autopilot", "asks again: " + bundleID);
}

void AutopilotOffers::alwaysKeep(const BundleID& bundleID) {
    host_.edit(ChangeWords::kept(nameOf(bundleID), true),
               [&](Layout& layout) { layout.alwaysKeep.insert(bundleID); });
    log_.log("autopilot", "always keep: " + bundleID);
    settle();
}

void AutopilotOffers::askToQuit(const BundleID& bundleID) {
    const std::string name = nameOf(bundleID);
    platform_.workspace.terminate(bundleID);
    log_.log("health", "asked " + name + " to quit");
}

void AutopilotOffers::settle() {
    const AppValues& values = host_.values();
    // Before the first scan there are no suggestions because there are no apps.
    if (values.inventoryLoaded && values.layout.autopilot.offerPending && suggestions(1).empty()) {
        host_.edit(Saving::nowUnlessBroken, [](Layout& layout) { layout.autopilot.offerPending = false; });
    }
}

std::string AutopilotOffers::nameOf(const BundleID& bundleID) const {
    return AppNames(host_.values(), platform_.workspace).of(bundleID);
}

Date AutopilotOffers::now() const {
    return floorToSeconds(platform_.mainThread.date());
}

bool NoteDeferral::isAnythingToAsk() const {
    const Layout& layout = host_.values().layout;
    if (host_.values().isPresenting()) {
        return false;  // not before an audience
    }
    return !layout.inbox.empty() || (layout.autopilot.offerPending && !offers_.suggestions(1).empty());
}

void NoteDeferral::noteClosed() {
    offers_.settle();
    putOff_ = suggestedNow();
    host_.set(&AppValues::noteDeferred, isAnythingToAsk());
}

void NoteDeferral::askAgain() {
    host_.set(&AppValues::noteDeferred, false);
}

void NoteDeferral::suggestionsChecked(bool offered) {
    if (offered || !std::ranges::includes(putOff_, suggestedNow())) {
        askAgain();
    }
}

std::set<std::string> NoteDeferral::suggestedNow() const {
    std::set<std::string> suggested;
    for (const TidySuggestion& suggestion : offers_.suggestions()) {
        const auto* const move = std::get_if<TidySuggestion::MoveTo>(&suggestion.change);
        suggested.insert(suggestion.bundleID + " " + std::string(move ? name(move->section) : "quit"));
    }
    return suggested;
}

void Newcomers::admit(const BundleIDs& present, const BundleID& ownBundleID) {
    Layout layout = host_.values().layout;
    const std::vector<BundleID> newcomers =
        layout.admit({.present = present, .ownBundleID = ownBundleID, .now = floorToSeconds(clock_.date())});
    if (newcomers.empty()) {
        host_.edit(Saving::soon, [&](Layout& mine) { mine = std::move(layout); });
        return;
    }
    const char* const where = layout.leaveNewIconsOut ? "out" : "tucked";
    log_.log("inbox", std::string("new icons, ") + where + " until answered: " + joined(newcomers));
    host_.edit(Saving::nowUnlessBroken, [&](Layout& mine) { mine = std::move(layout); });
    note_.askAgain();
}

void Newcomers::letAbsentGo(const BundleIDs& present, const BundleID& ownBundleID) {
    if (host_.values().layout.inbox.empty()) {
        return;
    }
    Layout layout = host_.values().layout;
    const std::vector<BundleID> gone = layout.letAbsentGo(
        {.present = present, .ownBundleID = ownBundleID, .now = floorToSeconds(clock_.date())});
    if (!gone.empty()) {
        log_.log("inbox", "away for a week, no longer asked about: " + joined(gone));
    }
    host_.edit(Saving::soon, [&](Layout& mine) { mine = std::move(layout); });
}

}  // namespace velko
