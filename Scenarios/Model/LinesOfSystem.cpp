#include <array>
#include <string>

#include "Scenarios/Model/Heard.h"

// What the log says of Velko's beginning, of the permission, and of what the system was asked for.

namespace velko::scenarios::model {

namespace {

using namespace std::chrono_literals;

// The permission, the system and the engine

void trustMissing(Heard& heard) {
    heard.scene.belief.isUntrusted = true;
    heard.scene.belief.asked.insert("Accessibility missing");
}

void trustGiven(Heard& heard) {
    heard.scene.belief.isUntrusted = false;
    heard.scene.belief.asked.insert("Accessibility granted");
}

void systemTold(Heard& heard) {
    heard.scene.belief.asked.insert(heard.text);
}

/// Some reasons leave no line of their own, or one that comes after a refusal.
bool isReason(const Heard& heard, const std::string& reason) {
    const Belief& belief = heard.scene.belief;
    if (!heard.scene.takesTime() &&
        ((reason == "show me stopped" && belief.alone) || reason == "pop out off")) {
        return true;
    }
    return belief.asked.contains(reason) || reason == "inventory" || reason == "try again" ||
           reason == "autoTuck" ||
           (reason == "peekEnded" && belief.openedAt && heard.at - *belief.openedAt < 65s);
}

void applied(Heard& heard) {
    Belief& belief = heard.scene.belief;
    const std::string& reason = heard.parts[0];
    heard.scene.require(isReason(heard, reason), "a plan is applied for a reason", heard.text);
    heard.scene.require(heard.parts[2] == belief.planText(), "what is applied is what should show",
                        heard.text + " instead of " + belief.planText());
    belief.asked.clear();
    belief.isRefused = false;
    belief.isAllShown = false;
}

void refused(Heard& heard) {
    Belief& belief = heard.scene.belief;
    heard.scene.require(isReason(heard, heard.parts[0]), "a plan is applied for a reason", heard.text);
    belief.asked.clear();
    belief.out = {};
    belief.isRefused = true;
}

void started(Heard& heard) {
    const BundleID own = heard.scene.belief.own;
    heard.scene.belief = {.own = own, .startedAt = heard.at};
}

constexpr auto systemLines = std::to_array<LineRow>({
    {"app", "Velko * starting on macOS *", started},
    {"app", "Accessibility not granted yet. Hiding nothing until it is.", trustMissing},
    {"app", "Accessibility taken away. Hiding nothing until it is granted again.", trustMissing},
    {"app", "Accessibility granted", trustGiven},
    {"engine", "applied (*) in * ms: *", applied},
    {"engine", "FAILED (*): *. Everything shown.", refused},
    {"engine", "UNAVAILABLE: *", [](Heard& heard) { heard.scene.belief.isEngineMissing = true; }},
    {"system", "*", systemTold},
});

}  // namespace

std::span<const LineRow> linesOfSystem() {
    return systemLines;
}

}  // namespace velko::scenarios::model
