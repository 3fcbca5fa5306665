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
        unknown,  ///< it runs, and Velko cannot look whether it has an icon
    };

    BundleID bundleID;
    std::string name;
    Section section = Section::bar;
    Presence presence = Presence::inMenuBar;
    std::optional<AppUsage> usage{};
    bool isWaiting = false;  ///< new, and the user has not said where it goes
    bool isKept = false;     ///< never suggested

    bool operator==(const ListedApp&) const = default;
};

/// Every app that has icons or a section, but for Velko and the system's own items: those that are listed, by
/// name, and how many there are.
struct ListedApps {
    /// Of apps that do not run; a layout may know any number of them. Each costs views, and on a Mac a look
    /// for its name.
    static constexpr std::size_t mostAtRest = 300;

    std::vector<ListedApp> apps;
    std::array<std::size_t, allSections.size()> counts{};  ///< of each section, listed or not
    std::size_t atRestLeftOut = 0;

    [[nodiscard]] std::size_t count(Section section) const {
        return counts.at(static_cast<std::size_t>(section));
    }
};

/// Those of a section, or all. The counts are of all.
[[nodiscard]] ListedApps listedApps(const AppController& controller, const Workspace& workspace,
                                    std::optional<Section> section);

}  // namespace velko
