#include "VelkoCore/Habits/AppUsage.h"

#include <cmath>
#include <utility>

#include "VelkoCore/NumberText.h"
#include "VelkoCore/Time/Timing.h"

namespace velko {

namespace {

std::string rounded(double value) {
    return fixedText(std::round(value), 0);
}

std::string memoryText(std::uint64_t bytes) {
    const double mebibytes = static_cast<double>(bytes) / (1024.0 * 1024.0);
    return mebibytes >= 1024 ? fixedText(mebibytes / 1024, 1) + " GB" : rounded(mebibytes) + " MB";
}

std::string cpuText(double percent) {
    if (percent < 0.1) {
        return "0% CPU";
    }
    return (percent < 10 ? fixedText(percent, 1) : rounded(percent)) + "% CPU";
}

}  // namespace

std::string describe(const AppUsage& usage) {
    std::string text = memoryText(usage.memoryBytes);
    if (usage.cpuPercent) {
        text += " · " + cpuText(*usage.cpuPercent);
    }
    return text;
}

bool AppHealth::isHeavy(const AppUsage& usage) noexcept {
    return usage.memoryBytes >= heavyMemoryBytes ||
           (usage.cpuPercent && *usage.cpuPercent >= heavyCPUPercent);
}

std::string_view AppHealth::usageHelp(const AppUsage& usage) noexcept {
    return isHeavy(usage) ? "Uses a lot for a menu bar app. You can quit it from the ••• menu."
                          : "Memory and CPU this app uses in the background";
}

void UsageTracker::record(const Round& latest) {
    // Both tables and the samples are ascending, and they rarely change: nearly every entry stays where it
    // is.
    auto last = last_.begin();
    auto usage = usage_.begin();
    const auto forgetBefore = [&](const BundleID* bundleID) {
        while (last != last_.end() && (bundleID == nullptr || last->first < *bundleID)) {
            last = last_.erase(last);
            usage = usage_.erase(usage);
        }
    };
    for (const auto& [bundleID, reading] : latest.samples) {
        forgetBefore(&bundleID);
        std::optional<double> cpu;
        if (last != last_.end() && last->first == bundleID) {
            cpu = cpuPercent(last->second, reading, latest.at);
        } else {
            last = last_.emplace_hint(last, bundleID, Last{});
            usage = usage_.emplace_hint(usage, bundleID, AppUsage{});
        }
        last->second = {.pid = reading.pid, .sample = reading.sample, .at = latest.at, .cpu = cpu};
        usage->second = {.memoryBytes = reading.sample.memoryBytes, .cpuPercent = cpu};
        ++last;
        ++usage;
    }
    forgetBefore(nullptr);
}

std::optional<double> UsageTracker::cpuPercent(const Last& last, const Reading& reading, Uptime at) {
    const bool continues = last.pid == reading.pid && last.at < at &&
                           reading.sample.cpuNanoseconds >= last.sample.cpuNanoseconds;
    if (!continues) {
        return std::nullopt;
    }
    const auto worked = static_cast<double>(reading.sample.cpuNanoseconds - last.sample.cpuNanoseconds);
    const double raw = worked / static_cast<double>((at - last.at).count()) * 100;
    return last.cpu ? Timing::healthAverageWeight * raw + (1 - Timing::healthAverageWeight) * *last.cpu : raw;
}

}  // namespace velko
