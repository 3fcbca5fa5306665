#include "VelkoCore/Watching/LiveActivityDetector.h"

#include "VelkoCore/Time/Timing.h"

namespace velko {

bool LiveActivityDetector::record(const Reading& reading) {
    if (!reading.pid) {
        *this = {};
        return false;
    }
    if (reading.pid != pid_) {
        pid_ = reading.pid;
        cpu_ = reading.cpuNanoseconds;
        recent_.clear();
    } else {
        countWork(reading);
        if (isBusy()) {
            lastBusy_ = reading.at;
        }
    }
    return isShowing(reading.at);
}

bool LiveActivityDetector::isShowing(Uptime at) const noexcept {
    return lastBusy_ && at - *lastBusy_ < Timing::liveActivityQuietSeconds;
}

void LiveActivityDetector::countWork(const Reading& reading) {
    const bool isOurs =
        reading.lastOwnChange && reading.at - *reading.lastOwnChange < Timing::liveActivityIgnoreAfterChange;
    if (reading.cpuNanoseconds > cpu_ && !isOurs) {
        recent_.push_back({.at = reading.at, .work = reading.cpuNanoseconds - cpu_});
    }
    cpu_ = reading.cpuNanoseconds;
    std::erase_if(recent_, [&](const Work& entry) {
        return reading.at - entry.at > Timing::liveActivityWindowSeconds;
    });
}

bool LiveActivityDetector::isBusy() const noexcept {
    // Counted down, as a sum of outside numbers could wrap around.
    std::uint64_t missing = Timing::liveActivityMinWorkNanoseconds;
    for (const Work& entry : recent_) {
        if (entry.work >= missing) {
            return true;
        }
        missing -= entry.work;
    }
    return false;
}

}  // namespace velko
