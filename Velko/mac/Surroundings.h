#pragma once

#include <filesystem>

#include "Velko/App/AppInfo.h"
#include "VelkoCore/Files/AtomicFile.h"

/// What the running program finds around itself.
namespace velko::Surroundings {

/// Of the bundle that this process runs from.
[[nodiscard]] AppInfo appInfo();

/// In the user's Application Support folder; without one the program stops.
[[nodiscard]] std::filesystem::path layoutFile();

/// File calls whose flush reaches the disk itself.
[[nodiscard]] FileCalls fileCalls();

[[nodiscard]] std::filesystem::path homeFolder();

/// In the user's home folder.
[[nodiscard]] std::filesystem::path logFile();

}  // namespace velko::Surroundings
