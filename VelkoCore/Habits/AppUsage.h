#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Time/Date.h"

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

/// Turns samples, taken now and then, into a smoothed CPU use per app. A value; keeps the last sample of
/// each app.
class UsageTracker {
 public:
    struct Reading {
        ProcessID pid = 0;
        ProcessSample sample;
    };

    /// The samples of all apps, taken at one moment.
    struct Round {
        const std::map<BundleID, Reading>& samples;
        Uptime at{};
    };

    /// Takes one round of samples. Apps that are not in it are forgotten. An app starts anew, without a CPU
    /// use, when it has another process than before or when its clock or counter has gone back.
    void record(const Round& latest);

    /// The figures of the apps in the last round.
    [[nodiscard]] const std::map<BundleID, AppUsage>& usage() const noexcept { return usage_; }

 private:
    struct Last {
        ProcessID pid = 0;
        ProcessSample sample{};
        Uptime at{};
        std::optional<double> cpu{};
    };

    [[nodiscard]] static std::optional<double> cpuPercent(const Last& last, const Reading& reading,
                                                          Uptime at);

    std::map<BundleID, Last> last_;  ///< of the same apps as `usage_`
    std::map<BundleID, AppUsage> usage_;
};

}  // namespace velko
