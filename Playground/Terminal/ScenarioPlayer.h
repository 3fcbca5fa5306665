#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace velko::playground {

/// Plays "a week with Velko" in the terminal, on a copy of the layout file, which is made when it is missing
/// and `mayCreate`. A layout that Velko can't read is only shown as Velko would show it. The process's exit
/// status, as of the next.
[[nodiscard]] int playWeek(const std::filesystem::path& layoutFile, bool mayCreate,
                           std::optional<std::int64_t> speed);

/// Plays the scenario in a file, on a copy of the layout file or with none. The status is 2 for a file that
/// can't be read or understood, and 1 when a step fails.
[[nodiscard]] int playFile(const std::filesystem::path& file,
                           const std::optional<std::filesystem::path>& layoutFile,
                           std::optional<std::int64_t> speed);

}  // namespace velko::playground
