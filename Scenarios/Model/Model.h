#pragma once

#include <optional>
#include <string>

#include "Scenarios/Language/Step.h"
#include "Scenarios/Model/Belief.h"
#include "Scenarios/Model/Trace.h"
#include "Scenarios/World.h"

namespace velko::scenarios {

/// A second Velko, told in the plainest way: what a person should see, what should be asked, what is saved
/// and what the log should say. It hears of every step and of every line of the log, and is compared with the
/// first after each step. Watches a world from before Velko starts. One thread.
class Model final {
 public:
    explicit Model(World& world);

    /// To be called after each step, once nothing is due. What is not as it should be, in one line.
    [[nodiscard]] std::optional<std::string> check(const script::Step& done);

 private:
    World& world_;
    model::Trace trace_;
    model::Belief belief_;
    MainThread::Uptime checkedAt_{0};
    MainThread::Uptime touchedAt_{0};  ///< when something last happened that nobody foresaw
};

}  // namespace velko::scenarios
