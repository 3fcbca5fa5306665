#pragma once

#include <string>
#include <vector>

#include "Velko/App/AppValues.h"
#include "VelkoCore/Identifiers.h"

namespace velko {

class AppController;

/// An app that has icons in the menu bar now, hidden ones included.
struct PresentApp {
    BundleID bundleID;
    std::string name;

    bool operator==(const PresentApp&) const = default;
};

/// The apps present, each once, as their first icons stand in the bar, left to right.
[[nodiscard]] std::vector<PresentApp> presentApps(const AppValues& values);

/// Whether the user says where an app goes: neither Velko itself nor a system item.
[[nodiscard]] bool canBePlaced(const AppController& controller, const BundleID& bundleID);

/// Whether an app is present.
[[nodiscard]] bool isPresent(const AppValues& values, const BundleID& bundleID);

/// An app's name for people; its identifier while it is not present.
[[nodiscard]] std::string appName(const AppValues& values, const BundleID& bundleID);

}  // namespace velko
