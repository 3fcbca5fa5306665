#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace velko::playground {

/// Plays "a week with Velko" in the terminal, on a copy of the layout file. If the file is missing and
/// `mayCreate` is true, it is made. If Velko cannot read the layout, it only shows what Velko would do then.
/// Returns the exit status of the process.
[[nodiscard]] int playWeek(const std::filesystem::path& layoutFile, bool mayCreate,
                           std::optional<std::int64_t> speed);

/// Plays the scenario in a file, on a copy of the layout file or without one. Returns the exit status of the
/// process: 2 if the file cannot be read or understood, 1 if a step fails.
[[nodiscard]] int playFile(const std::filesystem::path& file,
                           const std::optional<std::filesystem::path>& layoutFile,
                           std::optional<std::int64_t> speed);

}  // namespace velko::playground
