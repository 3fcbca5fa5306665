#include "VelkoCore/Watching/PopOutLimit.h"

#include "VelkoCore/Time/Timing.h"

namespace velko {

bool PopOutLimit::isTooOften(const BundleID& bundleID, Uptime at) {
    std::deque<Uptime>& times = popped_[bundleID];
    times.push_back(at);
    while (times.size() > Timing::popOutMostInWindow) {
        times.pop_front();
    }
    const bool isTooOften =
        times.size() == Timing::popOutMostInWindow && at - times.front() <= Timing::popOutWindow;
    if (isTooOften) {
        popped_.erase(bundleID);
    }
    return isTooOften;
}

void PopOutLimit::clicked(const BundleID& bundleID) {
    popped_.erase(bundleID);
}

}  // namespace velko
