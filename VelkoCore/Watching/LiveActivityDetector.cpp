#include "VelkoCore/Watching/LiveActivityDetector.h"

#include "VelkoCore/Time/Timing.h"

namespace velko {

bool LiveActivityDetector::record(const Request& request) {
    if (!request.pid) {
        *this = {};
        return false;
    }
    if (request.pid != pid_) {
        pid_ = request.pid;
        cpu_ = request.cpuNanoseconds;
        recent_.clear();
    } else {
        countWork(request);
        if (isBusy()) {
            lastBusy_ = request.at;
        }
    }
    return isShowing(request.at);
}

bool LiveActivityDetector::isShowing(double at) const noexcept {
    return lastBusy_ && at - *lastBusy_ < Timing::liveActivityQuietSeconds;
}

void LiveActivityDetector::countWork(const Request& request) {
    const bool isOurs =
        request.lastOwnChange && request.at - *request.lastOwnChange < Timing::liveActivityIgnoreAfterChange;
    if (request.cpuNanoseconds > cpu_ && !isOurs) {
        recent_.push_back({.at = request.at, .work = request.cpuNanoseconds - cpu_});
    }
    cpu_ = request.cpuNanoseconds;
    std::erase_if(recent_, [&](const Work& entry) {
        return request.at - entry.at > Timing::liveActivityWindowSeconds;
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
