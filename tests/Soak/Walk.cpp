#include "tests/Soak/Walk.h"

#include <utility>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/Rules/Invariants.h"
#include "Scenarios/World.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "tests/Soak/Chance.h"
#include "tests/TemporaryFolder.h"

namespace velko::soak {

namespace {

/// A Mac with Velko whose rules are checked, and the result so far.
struct Trial {
    void perform(const script::Step& step) {
        if (script::perform(step, world)) {
            outcome.steps.push_back(step);
            outcome.breach = invariants.check(step);
        }
    }

    [[nodiscard]] Outcome end() {
        for (const std::string_view line : world.log().lines()) {
            outcome.log.emplace_back(line);
        }
        return std::move(outcome);
    }
    [[nodiscard]] bool isOver() const { return outcome.breach.has_value(); }

    TemporaryFolder folder{};
    scenarios::World world{folder.path()};
    scenarios::Invariants invariants{world};
    Outcome outcome{};
};

}  // namespace

Outcome walk(std::uint64_t seed, std::chrono::milliseconds length) {
    Trial trial;
    Chance chance(seed);
    for (const script::Step& step : chance.beginning()) {
        trial.perform(step);
    }
    while (!trial.isOver() && trial.world.mac().mainThread.now() < length) {
        trial.perform(chance.next(trial.world));
    }
    return trial.end();
}

Outcome replay(const Steps& steps) {
    Trial trial;
    for (const script::Step& step : steps) {
        if (!trial.isOver()) {
            trial.perform(step);
        }
    }
    return trial.end();
}

}  // namespace velko::soak
