#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"

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
    std::optional<AppUsage> usage{};
    bool isWaiting = false;  ///< it is new, and the user has not said where it goes
    bool isKept = false;     ///< Velko never suggests to move it

    bool operator==(const ListedApp&) const = default;
};

/// The apps that have icons or a section, without Velko itself and the system's items: those that are listed,
/// ordered by name, and how many there are.
struct ListedApps {
    /// The most apps to list that do not run. A layout may know any number of them, and each costs views and,
    /// on a Mac, a search for its name.
    static constexpr std::size_t mostAtRest = 300;

    std::vector<ListedApp> apps;
    std::array<std::size_t, allSections.size()> counts{};  ///< how many apps each section has, listed or not
    std::size_t atRestLeftOut = 0;

    [[nodiscard]] std::size_t count(Section section) const {
        return counts.at(static_cast<std::size_t>(section));
    }
};

/// Lists the apps of one section, or of all sections. The counts are always of all.
[[nodiscard]] ListedApps listedApps(const AppController& controller, const Workspace& workspace,
                                    std::optional<Section> section);

}  // namespace velko
