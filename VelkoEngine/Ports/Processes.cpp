#include "VelkoEngine/Ports/Processes.h"

#include <cstdint>
#include <optional>

#include "VelkoEngine/Ports/Platform.h"

namespace velko::ProcessStats {

namespace {

/// A time in whole nanoseconds; nothing when the number needs more than 64 bits or the time base makes no
/// sense. No product overflows on the way.
std::optional<std::uint64_t> nanoseconds(std::uint64_t time, TimeBase base) {
    if (base.denominator == 0) {
        return std::nullopt;
    }
    const std::uint64_t numerator = base.numerator;
    const std::uint64_t remainder = time % base.denominator * numerator / base.denominator;  // below 2^64
    std::uint64_t whole = 0;
    if (__builtin_mul_overflow(time / base.denominator, numerator, &whole) ||
        __builtin_add_overflow(whole, remainder, &whole)) {
        return std::nullopt;
    }
    return whole;
}

}  // namespace

std::optional<ProcessSample> sample(const Platform& platform, ProcessID pid) {
    const auto usage = platform.processes.resourceUsage(pid);
    std::uint64_t time = 0;
    if (!usage || __builtin_add_overflow(usage->userTime, usage->systemTime, &time)) {
        return std::nullopt;
    }
    const auto cpu = nanoseconds(time, platform.processes.timeBase());
    if (!cpu) {
        return std::nullopt;
    }
    return ProcessSample{.cpuNanoseconds = *cpu, .memoryBytes = usage->physicalFootprint};
}

}  // namespace velko::ProcessStats
