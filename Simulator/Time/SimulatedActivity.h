#pragma once

#include <chrono>
#include <list>
#include <string>
#include <vector>

#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// What Velko has told the system that it is busy with, and when the system stretches its timers: after five
/// minutes in which nobody has looked at a program that is busy with nothing.
class SimulatedActivity final : public Activity {
 public:
    /// The main thread outlives this.
    explicit SimulatedActivity(SimulatedMainThread& mainThread) : mainThread_(mainThread) {}

    [[nodiscard]] Subscription begin(const std::string& reason) override;

    /// Why timers have to come in time now, oldest first; empty when they need not.
    [[nodiscard]] std::vector<std::string> reasons() const { return {reasons_.begin(), reasons_.end()}; }

    /// Somebody has looked at Velko: no timer is stretched for a while.
    void lookedAt();
    /// The system begins to stretch timers at once, until somebody looks at Velko.
    void nap() { mustNap_ = true; }
    /// Whether it stretches them. `isSeen`: something of Velko's is open before somebody's eyes.
    [[nodiscard]] bool isNapping(bool isSeen) const;

 private:
    static constexpr std::chrono::minutes unseenUntilNap{5};

    SimulatedMainThread& mainThread_;
    std::list<std::string> reasons_;
    MainThread::Uptime lookedAtAt_{};
    bool mustNap_ = false;
};

}  // namespace velko
