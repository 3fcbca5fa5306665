#pragma once

#include <filesystem>

namespace velko::playground {

/// Plays a morning with the given layout file, which is made when it is missing and `mayCreate`, and
/// prints it. The process's exit status.
[[nodiscard]] int playMorning(const std::filesystem::path& layoutFile, bool mayCreate);

}  // namespace velko::playground
