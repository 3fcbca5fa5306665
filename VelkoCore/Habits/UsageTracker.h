#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "VelkoCore/BundleID.h"
#include "VelkoCore/Habits/AppUsage.h"

namespace velko {

/// Turns samples, taken now and then, into a smoothed CPU use per app. A value; keeps the last sample of
/// each app.
class UsageTracker {
 public:
    struct Reading {
        std::int32_t pid = 0;
        ProcessSample sample;
    };

    struct Request {
        const std::map<BundleID, Reading>& samples;
        double at;  ///< seconds on a monotonic clock
    };

    /// Takes one round of samples. Apps that are not in it are forgotten; an app whose process, clock or
    /// counter does not continue the last round starts anew, with its memory only.
    void record(const Request& request);

    /// The figures of the apps in the last round.
    [[nodiscard]] const std::map<BundleID, AppUsage>& usage() const noexcept { return usage_; }

 private:
    struct Last {
        std::int32_t pid;
        ProcessSample sample;
        double at;
        std::optional<double> cpu;
    };

    [[nodiscard]] std::optional<double> cpuPercent(const BundleID& bundleID, const Reading& reading,
                                                   double at) const;

    std::map<BundleID, Last> last_;
    std::map<BundleID, AppUsage> usage_;
};

}  // namespace velko
