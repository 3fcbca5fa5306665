#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Habits/Autopilot.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

class AppController;
class Workspace;

/// An app as the settings list it.
struct ListedApp {
    enum class Presence {
        inMenuBar,
        runningWithoutIcon,
        notRunning,
        unknown,  ///< it runs, but Velko cannot see whether it has an icon
    };

    BundleID bundleID;
    std::string name;
    Section section = Section::bar;
    Presence presence = Presence::inMenuBar;
    bool isInstalled = true;  ///< false: this Mac knows no app by that identifier
    std::optional<AppUsage> usage{};
    std::optional<Date> lastClicked{};
    bool isWaiting = false;             ///< it is new, and the user has not said where it goes
    bool isKept = false;                ///< Velko never suggests to move it
    bool popsOut = true;                ///< it shows for a while when it changes, if Velko does that at all
    bool isQuiet = false;               ///< it changed so often that it stays in for today
    std::optional<Date> putOffUntil{};  ///< until then, nothing is suggested for it
    std::optional<TidySuggestion> suggestion{};  ///< what the autopilot would do with it

    bool isManaged = false;  ///< the organisation has placed it

    /// Whether Velko can forget it: it would not come back at the next look at the menu bar.
    [[nodiscard]] bool canBeForgotten() const { return presence == Presence::notRunning && !isManaged; }

    bool operator==(const ListedApp&) const = default;
};

/// What the list is ordered by. Apps that are equal in that are ordered by name.
enum class AppOrder {
    name,
    lastClick,  ///< the latest one first
    cost,       ///< what uses a lot first, and then by memory
};

/// The apps that have icons or a section, without Velko itself and the system's items: those that are listed,
/// and how many there are.
struct ListedApps {
    /// The most apps to list that do not run. A layout may know any number of them, and each costs views and,
    /// on a Mac, a search for its name.
    static constexpr std::size_t mostAtRest = 300;

    std::vector<ListedApp> apps;
    std::array<std::size_t, allSections.size()> counts{};  ///< how many apps each section has, listed or not
    std::size_t atRestLeftOut = 0;
    BundleIDs gone;  ///< apps of the layout, in any section, that are not on this Mac any more

    [[nodiscard]] std::size_t count(Section section) const {
        return counts.at(static_cast<std::size_t>(section));
    }
};

/// Whether apps that do not run are on this Mac. Finding that out costs a search of the disk, so it is done
/// once while a list shows.
using InstalledApps = std::map<BundleID, bool>;

/// Which apps are listed, and in which order.
struct ListedAppsRequest {
    std::optional<Section> section{};  ///< absent: all
    const BundleIDs& staying;          ///< apps that are listed whatever their section is
    std::string search{};              ///< what the name must have; empty: anything
    AppOrder order = AppOrder::name;
    Date now;
    /// What is known of apps that are only counted; more is added to it. Without it they count as installed.
    InstalledApps* installed = nullptr;
};

/// Lists apps. The counts are always of all apps.
[[nodiscard]] ListedApps listedApps(AppController& controller, const Workspace& workspace,
                                    const ListedAppsRequest& request);

}  // namespace velko
