#pragma once

#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/AppUsage.h"
#include "VelkoCore/BundleID.h"
#include "VelkoCore/Section.h"

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

/// Every app that has icons or a section, by name. Neither Velko nor the system's own items are among them.
[[nodiscard]] std::vector<ListedApp> listedApps(const AppController& controller, const Workspace& workspace);

}  // namespace velko
