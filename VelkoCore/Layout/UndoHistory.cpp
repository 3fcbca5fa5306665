#include "VelkoCore/Layout/UndoHistory.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "VelkoCore/Layout/Switches.h"

namespace velko {

namespace {

template <class Value>
void carryValue(Value& value, const Value& from, const Value& to) {
    if (from != to) {
        value = to;
    }
}

template <class Value>
void carryEntries(std::map<BundleID, Value>& values, const std::map<BundleID, Value>& from,
                  const std::map<BundleID, Value>& to) {
    for (const auto& [bundleID, value] : to) {
        const auto before = from.find(bundleID);
        if (before == from.end() || before->second != value) {
            values.insert_or_assign(bundleID, value);
        }
    }
    for (const auto& [bundleID, value] : from) {
        if (!to.contains(bundleID)) {
            values.erase(bundleID);
        }
    }
}

void carryEntries(BundleIDs& apps, const BundleIDs& from, const BundleIDs& to) {
    std::ranges::set_difference(to, from, std::inserter(apps, apps.end()));
    for (const BundleID& app : from) {
        if (!to.contains(app)) {
            apps.erase(app);
        }
    }
}

/// The order is that of arrival. An app that comes back goes to the end.
void carryEntries(std::vector<BundleID>& apps, const std::vector<BundleID>& from,
                  const std::vector<BundleID>& to) {
    const auto has = [](const std::vector<BundleID>& list, const BundleID& app) {
        return std::ranges::find(list, app) != list.end();
    };
    for (const BundleID& app : to) {
        if (!has(from, app) && !has(apps, app)) {
            apps.push_back(app);
        }
    }
    std::erase_if(apps, [&](const BundleID& app) { return has(from, app) && !has(to, app); });
}

void carryReveal(RevealSettings& reveal, const RevealSettings& from, const RevealSettings& to) {
    carryValue(reveal.autoTuckSeconds, from.autoTuckSeconds, to.autoTuckSeconds);
    carryValue(reveal.notchedStyle, from.notchedStyle, to.notchedStyle);
    carryValue(reveal.otherStyle, from.otherStyle, to.otherStyle);
}

}  // namespace

void carryOver(Layout& layout, const Layout& from, const Layout& to) {
    const Layout before = layout;
    carryEntries(layout.sections, from.sections, to.sections);
    carryValue(layout.newIconDefault, from.newIconDefault, to.newIconDefault);
    carryReveal(layout.reveal, from.reveal, to.reveal);
    carryEntries(layout.lastClicked, from.lastClicked, to.lastClicked);
    carryValue(layout.hasCompletedSetup, from.hasCompletedSetup, to.hasCompletedSetup);
    if (layout.seenApps && from.seenApps && to.seenApps) {
        carryEntries(*layout.seenApps, *from.seenApps, *to.seenApps);
    }
    carryEntries(layout.inbox, from.inbox, to.inbox);
    carryEntries(layout.firstSeen, from.firstSeen, to.firstSeen);
    carryEntries(layout.clickDays, from.clickDays, to.clickDays);
    carryEntries(layout.alwaysKeep, from.alwaysKeep, to.alwaysKeep);
    carryEntries(layout.neverPopOut, from.neverPopOut, to.neverPopOut);
    carryValue(layout.showAllFromWidth, from.showAllFromWidth, to.showAllFromWidth);
    carryValue(layout.hotKeys, from.hotKeys, to.hotKeys);
    carryEntries(layout.quietUntil, from.quietUntil, to.quietUntil);
    carryEntries(layout.shareKeep, from.shareKeep, to.shareKeep);
    carryValue(layout.presentingMinutes, from.presentingMinutes, to.presentingMinutes);
    carryEntries(layout.autopilot.snoozedUntil, from.autopilot.snoozedUntil, to.autopilot.snoozedUntil);
    for (const SwitchRow& row : Switches::all) {
        if (Switches::isOn(from, row.which) != Switches::isOn(to, row.which)) {
            Switches::set(layout, row.which, Switches::isOn(to, row.which));
        }
    }
    // An app that has its place back waits no longer, though it may have come anew meanwhile.
    std::erase_if(layout.inbox, [&](const BundleID& app) {
        return layout.section(app) != before.section(app) && !to.isWaiting(app);
    });
    layout.moveWaiting();  // to where apps wait now
    std::erase_if(layout.waitingGoneSince, [&](const auto& gone) { return !layout.isWaiting(gone.first); });
}

void UndoHistory::record(Change change, const Layout& before, const Layout& after) {
    if (before == after) {
        return;
    }
    undone_.clear();
    done_.push_back({.change = std::move(change),
                     .before = std::make_shared<const Layout>(before),
                     .after = std::make_shared<const Layout>(after)});
    if (done_.size() > longest) {
        done_.erase(done_.begin());
    }
    ++revision_;
    hasJustUndone_ = false;
}

bool UndoHistory::undo(Layout& layout) {
    if (done_.empty()) {
        return false;
    }
    Step step = std::move(done_.back());
    done_.pop_back();
    carryOver(layout, *step.after, *step.before);
    undone_.push_back(std::move(step));
    ++revision_;
    hasJustUndone_ = true;
    return true;
}

bool UndoHistory::redo(Layout& layout) {
    if (undone_.empty()) {
        return false;
    }
    Step step = std::move(undone_.back());
    undone_.pop_back();
    carryOver(layout, *step.before, *step.after);
    done_.push_back(std::move(step));
    ++revision_;
    hasJustUndone_ = false;
    return true;
}

void UndoHistory::clear() {
    if (done_.empty() && undone_.empty()) {
        return;
    }
    done_.clear();
    undone_.clear();
    ++revision_;
    hasJustUndone_ = false;
}

}  // namespace velko
