#include "Simulator/Time/SimulatedActivity.h"

namespace velko {

Subscription SimulatedActivity::begin(const std::string& reason) {
    const auto place = reasons_.insert(reasons_.end(), reason);
    mainThread_.wakeFromNap();
    return Subscription([this, place] { reasons_.erase(place); });
}

void SimulatedActivity::lookedAt() {
    mustNap_ = false;
    lookedAtAt_ = mainThread_.now();
    mainThread_.wakeFromNap();
}

bool SimulatedActivity::isNapping(bool isSeen) const {
    return !isSeen && reasons_.empty() && (mustNap_ || mainThread_.now() - lookedAtAt_ >= unseenUntilNap);
}

}  // namespace velko
