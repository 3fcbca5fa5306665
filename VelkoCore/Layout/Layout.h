#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "VelkoCore/Habits/Autopilot.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

struct LayoutExport;

/// Everything that Velko remembers: where each app's icons belong, how they are revealed, and what was
/// learnt from the user's clicks. A default-made layout is the one of a fresh installation.
struct Layout {
    static constexpr std::int64_t currentVersion = 1;

    std::int64_t version = currentVersion;
    std::map<BundleID, Section> sections = {};
    Section newIconDefault = Section::bar;  ///< the section of an app without an entry in `sections`
    RevealSettings reveal = {};
    std::map<BundleID, Date> lastClicked = {};
    bool hasCompletedSetup = false;
    bool askAboutNewIcons = true;
    std::optional<BundleIDs> seenApps{std::in_place};  ///< absent: not tracked yet (an older build's file)
    std::vector<BundleID> inbox = {};                  ///< new apps waiting to be sorted, as they arrived
    std::map<BundleID, Date> firstSeen = {};
    std::optional<Date> knownGraceUntil = {};
    std::map<BundleID, std::vector<Date>> clickDays = {};  ///< starts of the local days with a click
    BundleIDs alwaysKeep = {};                             ///< apps never to be suggested
    AutopilotState autopilot = {};
    bool popOutOnChange = true;
    bool showLiveActivities = true;

    bool operator==(const Layout&) const = default;

    /// The section of an app: its entry, else `newIconDefault`.
    [[nodiscard]] Section section(const BundleID& bundleID) const;

    /// Whether an app is in `inbox`: new, and its place not yet said by the user.
    [[nodiscard]] bool isWaiting(const BundleID& bundleID) const;

    /// Puts an app into a section and takes it out of `inbox`.
    void place(const BundleID& bundleID, Section section);

    /// The apps that are in the menu bar at a moment.
    struct Admission {
        const BundleIDs& present;
        const BundleID& ownBundleID;  ///< Velko itself; it and the hosts of system items never count
        Date now;
    };

    /// Remembers the apps that are present. Those that are new and have no place yet are tucked, wait in
    /// `inbox` for the user's answer, and are returned in ascending order. Nobody is new before the setup is
    /// done, when the user doesn't want to be asked, or in the first day after an older build's file.
    std::vector<BundleID> admit(const Admission& admission);

    /// Notes a click on an app's icon: its moment and its local day. Days past are let go after three weeks.
    void recordClick(const BundleID& bundleID, Date at, Calendar calendar);

    /// Places the app where the suggestion moves it; a suggested quit changes nothing.
    void accept(const TidySuggestion& suggestion);

    /// Leaves the app out of suggestions for the next 30 local days.
    void snooze(const BundleID& bundleID, Date now, Calendar calendar);

    /// Corrects dates that were noted while the clock was ahead. A past moment that lies more than a day
    /// ahead becomes now. A snooze or a grace period that ends too late gets its usual length. Returns
    /// whether a date was corrected.
    bool setBackDates(Date now, Calendar calendar);

    /// Merges an imported layout: its placements and preferences win, what it does not name stays. The
    /// setup counts as done.
    void apply(const LayoutExport& other);
};

}  // namespace velko
