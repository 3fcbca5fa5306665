#include "VelkoCore/Habits/UsageTracker.h"

#include <utility>

#include "VelkoCore/Time/Timing.h"

namespace velko {

void UsageTracker::record(const Request& request) {
    std::map<BundleID, Last> last;
    std::map<BundleID, AppUsage> usage;
    for (const auto& [bundleID, reading] : request.samples) {
        const std::optional<double> cpu = cpuPercent(bundleID, reading, request.at);
        last.emplace_hint(last.end(), bundleID,
                          Last{.pid = reading.pid, .sample = reading.sample, .at = request.at, .cpu = cpu});
        usage.emplace_hint(usage.end(), bundleID,
                           AppUsage{.memoryBytes = reading.sample.memoryBytes, .cpuPercent = cpu});
    }
    last_ = std::move(last);
    usage_ = std::move(usage);
}

std::optional<double> UsageTracker::cpuPercent(const BundleID& bundleID, const Reading& reading,
                                               double at) const {
    const auto entry = last_.find(bundleID);
    if (entry == last_.end()) {
        return std::nullopt;
    }
    const Last& last = entry->second;
    const bool continues = last.pid == reading.pid && last.at < at &&
                           reading.sample.cpuNanoseconds >= last.sample.cpuNanoseconds;
    if (!continues) {
        return std::nullopt;
    }
    const auto worked = static_cast<double>(reading.sample.cpuNanoseconds - last.sample.cpuNanoseconds);
    const double raw = worked / 1e9 / (at - last.at) * 100;
    return last.cpu ? Timing::healthAverageWeight * raw + (1 - Timing::healthAverageWeight) * *last.cpu : raw;
}

}  // namespace velko
