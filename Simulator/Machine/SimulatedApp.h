#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "VelkoCore/Identifiers.h"

namespace velko {

/// One icon that an app puts into the menu bar. What is left out is an attribute that its element lacks.
struct SimulatedIcon {
    std::optional<std::string> title{};
    std::optional<std::string> description{};
    std::optional<std::string> help{};
    std::optional<std::string> identifier{};
    std::variant<std::monostate, std::string, double> value{};
    double width = 30;                ///< points
    std::optional<int> systemItem{};  ///< an item of the system's own: its number in configurations
};

/// A program to run on the simulated Mac.
struct SimulatedApp {
    BundleID bundleID{};                      ///< empty: it has none
    std::string name{};                       ///< empty: it has no localized name
    std::vector<SimulatedIcon> icons{};       ///< right to left
    std::optional<std::string> bundlePath{};  ///< left out: "/Applications/<name>.app"; empty: it has none
    std::string processName{};                ///< empty: the same as `name`
    bool isForeign = false;                   ///< another user's: the kernel says little of it
    bool isApplication = true;                ///< false: a process that the workspace does not list
    bool isRegular = false;  ///< its launch and its end are announced; of an agent only the list tells

    // The programs with which every Mac starts.
    static constexpr auto menuBarHostName = "MenuBarAgent";
    static constexpr int clockItem = 0;  ///< the number of the clock among the system's items
    /// The menu bar's host, with the system's own items.
    [[nodiscard]] static SimulatedApp menuBarAgent();
    [[nodiscard]] static SimulatedApp systemUIServer();
    /// Velko with its broom.
    [[nodiscard]] static SimulatedApp velkoItself();
};

}  // namespace velko
