#include "VelkoCore/Layout/Layout.h"

#include <algorithm>

#include "VelkoCore/Sorting/TidySuggestion.h"
#include "VelkoCore/Time/Timing.h"

namespace velko {

Section Layout::section(const BundleID& bundleID) const {
    const auto entry = sections.find(bundleID);
    return entry == sections.end() ? newIconDefault : entry->second;
}

void Layout::place(const BundleID& bundleID, Section section) {
    sections.insert_or_assign(bundleID, section);
    std::erase(inbox, bundleID);
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

}  // namespace velko
