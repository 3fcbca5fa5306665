#pragma once

#include <functional>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// What Velko has told the system that it is busy with.
class SimulatedActivity final : public Activity {
 public:
    [[nodiscard]] Subscription begin(const std::string& reason) override {
        const auto place = reasons_.insert(reasons_.end(), reason);
        if (onBegin) {
            onBegin();
        }
        return Subscription([this, place] { reasons_.erase(place); });
    }

    /// Why timers have to come in time now, oldest first; empty when they need not.
    [[nodiscard]] std::vector<std::string> reasons() const { return {reasons_.begin(), reasons_.end()}; }

    std::function<void()> onBegin;  ///< called whenever one begins

 private:
    std::list<std::string> reasons_;
};

}  // namespace velko
