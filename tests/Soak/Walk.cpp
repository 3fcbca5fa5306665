#include "tests/Soak/Walk.h"

#include "Playground/Invariants.h"
#include "Playground/Script/Player.h"
#include "Playground/Stage.h"
#include "tests/Soak/Chance.h"
#include "tests/TemporaryFolder.h"

namespace velko::soak {

namespace {

/// A Mac with Velko, watched, and what has come of it so far.
struct Trial {
    void perform(const script::Step& step) {
        if (script::perform(step, stage)) {
            outcome.steps.push_back(step);
            outcome.breach = invariants.check(step);
        }
    }

    [[nodiscard]] bool isOver() const { return outcome.breach.has_value(); }

    TemporaryFolder folder{};
    playground::Stage stage{folder.path()};
    playground::Invariants invariants{stage};
    Outcome outcome{};
};

}  // namespace

Outcome walk(std::uint64_t seed, std::chrono::milliseconds length) {
    Trial trial;
    Chance chance(seed);
    for (const script::Step& step : chance.beginning()) {
        trial.perform(step);
    }
    while (!trial.isOver() && trial.stage.mac().mainThread.now() < length) {
        trial.perform(chance.next(trial.stage));
    }
    return trial.outcome;
}

Outcome replay(const Steps& steps) {
    Trial trial;
    for (const script::Step& step : steps) {
        if (!trial.isOver()) {
            trial.perform(step);
        }
    }
    return trial.outcome;
}

}  // namespace velko::soak
