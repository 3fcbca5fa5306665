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

/// What a left click on the broom should come to.
enum class ClickMeaning { menu, nothing, opensNote, toggles };

/// A step of a scenario while its outcome is compared with what should come of it.
struct StepCheck {
    using Uptime = MainThread::Uptime;

    World& world;
    Expected& expected;
    const script::Step& step;
    Uptime begun;                         ///< when the step began
    ClickMeaning meaningAtFirst{};        ///< of a click on the broom, before anything of the step is heard
    std::optional<std::string> breach{};  ///< what did not hold first

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

    /// What the apps cost, as Velko has measured it.
    [[nodiscard]] std::map<BundleID, AppUsage> usage() const {
        const AppController* velko = world.velko();
        return velko == nullptr ? std::map<BundleID, AppUsage>() : velko->values().usage;
    }
    [[nodiscard]] std::set<std::string> suggestions() const {
        return suggestionsFor(expected, usage(), date());
    }
    [[nodiscard]] bool asksSomething() const {
        return !expected.layout.inbox.empty() ||
               (expected.layout.autopilot.offerPending && !suggestions().empty());
    }
};

/// Hears a line of the log: whether it may be said now and is right, and what should hold from then on.
void follow(StepCheck& check, const Happening& happening);

/// What should have come of the step itself, once everything that was logged in it is heard.
void checkStep(StepCheck& check, const std::vector<Happening>& happened);

/// Lets end what ends without a word.
void expire(StepCheck& check, StepCheck::Uptime at);

/// The note has opened or closed.
void noteTurned(StepCheck& check, const Happening& turn);

/// What should have come about by itself by now; `touched`: when something last happened to Velko or its Mac.
void checkDeadlines(StepCheck& check, Expected::Uptime touched);

/// Whether what a person sees, and what Velko holds, is what should be.
void compare(StepCheck& check);

/// Whether a step is a left click on the broom, or as good as one, that reaches Velko.
[[nodiscard]] bool isBroomClick(const script::Step& step);

/// What a left click on the broom should come to, as things stand.
[[nodiscard]] ClickMeaning meaningOfClick(const StepCheck& check);

/// Work that holds up the main thread makes what is due late, and a line heard later than it was written.
constexpr auto late = std::chrono::milliseconds(300);

/// Whether two moments are the same, but for that.
[[nodiscard]] inline bool isAbout(Expected::Uptime moment, Expected::Uptime due) {
    return moment + late >= due && moment <= due + 4 * late;
}

}  // namespace velko::scenarios::model
