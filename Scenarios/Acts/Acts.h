#pragma once

#include <expected>
#include <span>
#include <string>

#include "Scenarios/Language/Step.h"
#include "Scenarios/World.h"

// What each verb does: one table for each kind of subject, which together hold every verb once.

namespace velko::script {

using Done = std::expected<void, std::string>;

/// The identifier of the app that the step names.
[[nodiscard]] BundleID appOf(const Step& step);

/// What is done to the Mac as a whole.
struct MacAct {
    Verb verb;
    Done (*perform)(const Step&, scenarios::World&);
};
[[nodiscard]] std::span<const MacAct> macActs();
[[nodiscard]] std::span<const MacAct> expectations();

/// What is done to an app that runs.
struct AppAct {
    Verb verb;
    Done (*perform)(const Step&, SimulatedMac&, ProcessID);
};
[[nodiscard]] std::span<const AppAct> appActs();

/// What the user does in Velko, which runs. The identifier is the app's, where the verb names one.
struct VelkoAct {
    Verb verb;
    Done (*perform)(const Step&, AppController&, const BundleID&);
};
[[nodiscard]] std::span<const VelkoAct> velkoActs();
[[nodiscard]] std::span<const VelkoAct> settingActs();

}  // namespace velko::script
