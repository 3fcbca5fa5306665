#include "VelkoCore/Habits/AppUsage.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "VelkoCore/Time/Timing.h"

namespace velko {

namespace {

/// Decimal text with a point in every locale, rounded to so many decimals.
std::string fixed(double value, int decimals) {
    std::array<char, 350> text{};  // The largest number has 309 digits.
    const auto result = std::to_chars(text.begin(), text.end(), value, std::chars_format::fixed, decimals);
    return {text.begin(), result.ptr};
}

std::string whole(double value) {
    return fixed(std::round(value), 0);
}

std::string memoryText(std::uint64_t bytes) {
    const double mebibytes = static_cast<double>(bytes) / (1024.0 * 1024.0);
    return mebibytes >= 1024 ? fixed(mebibytes / 1024, 1) + " GB" : whole(mebibytes) + " MB";
}

std::string cpuText(double percent) {
    if (percent < 0.1) {
        return "0% CPU";
    }
    return (percent < 10 ? fixed(percent, 1) : whole(percent)) + "% CPU";
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
    std::map<BundleID, Last> last;
    std::map<BundleID, AppUsage> usage;
    for (const auto& [bundleID, reading] : latest.samples) {
        const std::optional<double> cpu = cpuPercent(bundleID, reading, latest.at);
        last.emplace_hint(last.end(), bundleID,
                          Last{.pid = reading.pid, .sample = reading.sample, .at = latest.at, .cpu = cpu});
        usage.emplace_hint(usage.end(), bundleID,
                           AppUsage{.memoryBytes = reading.sample.memoryBytes, .cpuPercent = cpu});
    }
    last_ = std::move(last);
    usage_ = std::move(usage);
}

std::optional<double> UsageTracker::cpuPercent(const BundleID& bundleID, const Reading& reading,
                                               Uptime at) const {
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
    const double raw = worked / static_cast<double>((at - last.at).count()) * 100;
    return last.cpu ? Timing::healthAverageWeight * raw + (1 - Timing::healthAverageWeight) * *last.cpu : raw;
}

}  // namespace velko
