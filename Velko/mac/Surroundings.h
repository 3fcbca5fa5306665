#pragma once

#include <filesystem>

#include "Velko/AppInfo.h"

/// What the running program finds around itself.
namespace velko::Surroundings {

/// Of the bundle that this process runs from.
[[nodiscard]] AppInfo appInfo();

/// In the user's Application Support folder; without one the program stops.
[[nodiscard]] std::filesystem::path layoutFile();

/// In the user's home folder.
[[nodiscard]] std::filesystem::path logFile();

}  // namespace velko::Surroundings
