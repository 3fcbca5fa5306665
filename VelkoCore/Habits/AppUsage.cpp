#include "VelkoCore/Habits/AppUsage.h"

#include <array>
#include <charconv>
#include <cmath>

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

}  // namespace velko
