#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "VelkoCore/Files/Json.h"
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
    static constexpr std::int64_t longestPresenting = std::int64_t{24} * 60;  ///< minutes

    std::int64_t version = currentVersion;
    std::map<BundleID, Section> sections = {};
    Section newIconDefault = Section::bar;  ///< the section of an app without an entry in `sections`
    RevealSettings reveal = {};
    std::map<BundleID, Date> lastClicked = {};
    bool hasCompletedSetup = false;
    std::optional<Date> setupPutOff = {};  ///< when the user left the setup for later; absent: never
    bool askAboutNewIcons = true;
    std::optional<BundleIDs> seenApps{std::in_place};  ///< absent: not tracked yet (an older build's file)
    std::vector<BundleID> inbox = {};                  ///< new apps waiting to be sorted, as they arrived
    std::map<BundleID, Date> waitingGoneSince = {};    ///< apps in `inbox` without an icon now
    std::map<BundleID, Date> firstSeen = {};
    std::optional<Date> knownGraceUntil = {};
    std::map<BundleID, std::vector<Date>> clickDays = {};  ///< starts of the local days with a click
    BundleIDs alwaysKeep = {};                             ///< apps never to be suggested
    AutopilotState autopilot = {};
    bool popOutOnChange = true;
    bool showLiveActivities = true;
    bool leaveNewIconsOut = false;             ///< new apps wait for the answer in the bar, and not tucked
    bool searchInMenu = false;                 ///< whether the broom's menu offers to search the menu bar
    bool offersPresenting = false;             ///< whether the user can hide all icons for an audience
    bool shelfWhenFull = true;                 ///< icons that have no room in the bar come out on the shelf
    BundleIDs neverPopOut = {};                ///< tucked apps that stay in when they change
    std::map<BundleID, Date> quietUntil = {};  ///< apps that changed all the time stay in until then
    BundleIDs shareKeep = {};                  ///< apps that stay in the bar for an audience
    std::int64_t presentingMinutes = 0;        ///< how long presenting lasts; 0: until the user ends it
    Json hotKeys = {};                         ///< what `HotKeySettings` reads; null: no key was ever chosen
    std::optional<std::int64_t> showAllFromWidth = {};  ///< nothing is hidden on displays of so many points
    Json::Object unread = {};  ///< what the file says wrongly about additions of newer builds; it stays there

    bool operator==(const Layout&) const = default;

    /// The section of an app: its entry, else `newIconDefault`.
    [[nodiscard]] Section section(const BundleID& bundleID) const;

    /// Whether an app is in `inbox`: new, and its place not yet said by the user.
    [[nodiscard]] bool isWaiting(const BundleID& bundleID) const;

    /// Puts an app into a section and takes it out of `inbox`.
    void place(const BundleID& bundleID, Section section);

    /// Forgets all that is known of these apps. One that comes back is as new as an app that was never there.
    void forget(const BundleIDs& apps);

    /// The apps that are in the menu bar at a moment.
    struct Admission {
        const BundleIDs& present;
        const BundleID& ownBundleID;  ///< Velko itself; it and the hosts of system items never count
        Date now;
    };

    /// Where new apps wait for the user's answer.
    [[nodiscard]] Section waitingSection() const noexcept {
        return leaveNewIconsOut ? Section::bar : Section::tucked;
    }

    /// Puts all apps that wait into the section where they now wait.
    void moveWaiting();

    /// Remembers the apps that are present. Those that are new and have no place yet get their waiting place,
    /// wait in `inbox` for the user's answer, and are returned in ascending order. Nobody is new before the
    /// setup is done, when the user doesn't want to be asked, or in the first day after an older build's
    /// file.
    std::vector<BundleID> admit(const Admission& admission);

    /// Remembers which of the waiting apps are not present. Those that have been away for a week are
    /// forgotten as if they had never come, and are returned in ascending order: Velko asks when they come
    /// again.
    std::vector<BundleID> letAbsentGo(const Admission& admission);

    /// 0 for anything up to 0, else at most a day.
    [[nodiscard]] static std::int64_t normalisedPresenting(std::int64_t minutes) noexcept;

    /// Whether the app may pop out when it changes: the user wants that, and it is not to be quiet now.
    [[nodiscard]] bool mayPopOut(const BundleID& bundleID, Date now) const;

    /// Whether the app is to be quiet for the rest of a day because it changed all the time.
    [[nodiscard]] bool isQuiet(const BundleID& bundleID, Date now) const;

    /// Keeps the app in until the next local day, and forgets apps whose time is over.
    void quieten(const BundleID& bundleID, Date now, Calendar calendar);

    /// Says whether the user wants to see when the app changes. One that was quiet is not any more.
    void setPopsOut(const BundleID& bundleID, bool popsOut);

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
