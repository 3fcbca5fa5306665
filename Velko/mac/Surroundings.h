#pragma once

#include <filesystem>

#include "Velko/App/AppInfo.h"
#include "VelkoCore/Files/AtomicFile.h"

/// What the running program can find out about itself and its user.
namespace velko::Surroundings {

/// About the bundle of this process.
[[nodiscard]] AppInfo appInfo();

/// In the user's Application Support folder. If the user has none, the program stops.
[[nodiscard]] std::filesystem::path layoutFile();

/// In the Application Support folder of the whole Mac, where only administrators may write.
[[nodiscard]] std::filesystem::path managedLayoutFile();

/// The socket for commands, beside the layout.
[[nodiscard]] std::filesystem::path commandSocket();

/// File calls whose `fsync` writes to the disk itself.
[[nodiscard]] FileCalls fileCalls();

[[nodiscard]] std::filesystem::path homeFolder();

/// In the user's home folder.
[[nodiscard]] std::filesystem::path logFile();

}  // namespace velko::Surroundings
