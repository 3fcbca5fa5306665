#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velko {

/// One reading of one process.
struct ProcessSample {
    std::uint64_t cpuNanoseconds = 0;  ///< user and system time since the process began
    std::uint64_t memoryBytes = 0;     ///< physical footprint

    bool operator==(const ProcessSample&) const = default;
};

/// What an app costs in the background.
struct AppUsage {
    std::uint64_t memoryBytes = 0;
    std::optional<double> cpuPercent;  ///< of one core, smoothed; absent until two samples can be compared

    bool operator==(const AppUsage&) const = default;
};

/// The figures for people: "812 MB", "1.0 GB · 2.5% CPU".
[[nodiscard]] std::string describe(const AppUsage& usage);

/// What is a lot for an app in the menu bar.
namespace AppHealth {

inline constexpr std::uint64_t heavyMemoryBytes = 400ULL * 1024 * 1024;
inline constexpr double heavyCPUPercent = 2.0;

/// Whether an app reaches either limit. An unknown CPU use does not.
[[nodiscard]] bool isHeavy(const AppUsage& usage) noexcept;

/// The help text of an app's usage line.
[[nodiscard]] std::string_view usageHelp(const AppUsage& usage) noexcept;

}  // namespace AppHealth

}  // namespace velko
