#pragma once

#include <string>

#include "VelkoCore/Identifiers.h"

namespace velko {

/// What the running program knows about itself and its system; fixed for the run.
struct AppInfo {
    BundleID bundleID = "app.velko.mac";  ///< this one where the bundle names none
    std::string version{};
    std::string build{};          ///< the bundle's build number
    std::string channel{};        ///< where this copy comes from, in a word: "release", "beta", "development"
    std::string systemVersion{};  ///< the operating system's, in its own words
    std::string bundlePath{};
    std::string documentation{};  ///< its address; empty where this build names none

    /// Whether it runs from where the system expects apps.
    [[nodiscard]] bool isInApplications() const { return bundlePath.starts_with("/Applications/"); }
};

}  // namespace velko
