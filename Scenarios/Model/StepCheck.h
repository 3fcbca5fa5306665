#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "Scenarios/Language/Step.h"
#include "Scenarios/Model/Expected.h"
#include "Scenarios/Model/Model.h"
#include "Scenarios/World.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoCore/Habits/AppUsage.h"

namespace velko::scenarios::model {

/// What a left click on the broom should do.
enum class ClickMeaning { menu, nothing, opensNote, toggles };

/// The check of one step of a scenario: whether the step had the results that it should have.
struct StepCheck {
    using Uptime = MainThread::Uptime;

    World& world;
    Expected& expected;
    const script::Step& step;
    Uptime begun;                         ///< when the step began
    ClickMeaning meaningAtFirst{};        ///< of a click on the broom, before the step's log lines are read
    std::optional<std::string> breach{};  ///< the first rule that was broken

    void require(bool holds, const std::string& rule, const std::string& detail = {}) {
        if (!holds && !breach) {
            breach = detail.empty() ? rule : rule + ": " + detail;
        }
    }

    [[nodiscard]] Uptime now() const { return world.mac().mainThread.now(); }
    [[nodiscard]] Date date() const {
        return std::chrono::floor<std::chrono::seconds>(world.mac().mainThread.date());
    }
    /// Whether time passes in the step, so that things may happen by themselves.
    [[nodiscard]] bool takesTime() const {
        return step.verb == script::Verb::wait || step.verb == script::Verb::pointAt ||
               step.verb == script::Verb::pointAtIcon;
    }

    /// Whether the user does nothing in Velko meanwhile.
    [[nodiscard]] bool leavesVelkoAlone() const { return takesTime() || step.verb < script::Verb::clickIcon; }

    /// Whether icons have tucked themselves in the course of the step.
    [[nodiscard]] bool hasJustTucked() const { return expected.tuckedAt && *expected.tuckedAt >= begun; }

    /// What the apps cost, as Velko has measured it.
    [[nodiscard]] std::map<BundleID, AppUsage> usage() const;
    [[nodiscard]] std::set<std::string> suggestions() const {
        return suggestionsFor(expected, usage(), date());
    }
    [[nodiscard]] bool asksSomething() const {
        const bool mayAsk = !expected.out.isPresenting;
        return mayAsk && (!expected.layout.inbox.empty() ||
                          (expected.layout.autopilot.offerPending && !suggestions().empty()));
    }
};

/// Reads a line of the log: checks that the line is right at this moment, and changes what is expected.
void follow(StepCheck& check, const Happening& happening);

/// Checks the step's own results, after all its log lines have been read.
void checkStep(StepCheck& check, const std::vector<Happening>& happened);

/// Ends what ends without a log line.
void expire(StepCheck& check, StepCheck::Uptime at);

/// The note has opened or closed.
void noteTurned(StepCheck& check, const Happening& turn);

/// Checks what should have happened by itself by now. `touched`: when something last happened to Velko or its
/// Mac.
void checkDeadlines(StepCheck& check, Expected::Uptime touched);

/// Compares what a person sees, and Velko's values, with what is expected.
void compare(StepCheck& check);

/// Whether a step is a left click on the broom, or counts as one, and reaches Velko.
[[nodiscard]] bool isBroomClick(const script::Step& step);

/// Whether a step gives Velko a command, or agrees to one.
[[nodiscard]] bool isCommand(const script::Step& step);

/// Whether a step presses a button on the broom in any way that reaches Velko.
[[nodiscard]] bool isPressOnBroom(const script::Step& step);

/// What a left click on the broom should do now.
[[nodiscard]] ClickMeaning meaningOfClick(const StepCheck& check);

/// Work that blocks the main thread delays timers, and the model then reads a line later than it was written.
constexpr auto late = std::chrono::milliseconds(300);

/// Whether two moments are the same, apart from such delays.
[[nodiscard]] inline bool isAbout(Expected::Uptime moment, Expected::Uptime due) {
    return moment + late >= due && moment <= due + 4 * late;
}

}  // namespace velko::scenarios::model
