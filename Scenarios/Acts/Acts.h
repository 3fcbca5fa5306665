#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <expected>
#include <span>
#include <string>
#include <string_view>

#include "Scenarios/Language/Step.h"
#include "Scenarios/World.h"

// What each verb does: one table for each kind of subject. Together they hold every verb once.

namespace velko {
class SimulatedSurface;
}

namespace velko::script {

using Done = std::expected<void, std::string>;

/// Performs one step, in virtual time. If the step is not possible (an app that does not run shall quit), or
/// if an expectation is not true, nothing happens, and one line says why.
Done perform(const Step& step, scenarios::World& world);

/// What is done to the Mac as a whole.
struct MacAct {
    Verb verb;
    Done (*perform)(const Step&, scenarios::World&);
};
[[nodiscard]] std::span<const MacAct> timeActs();
[[nodiscard]] std::span<const MacAct> launchActs();
[[nodiscard]] std::span<const MacAct> mouseActs();
[[nodiscard]] std::span<const MacAct> faceActs();
[[nodiscard]] std::span<const MacAct> fileActs();
[[nodiscard]] std::span<const MacAct> commandActs();
[[nodiscard]] std::span<const MacAct> keyActs();
[[nodiscard]] std::span<const MacAct> systemActs();
[[nodiscard]] std::span<const MacAct> expectations();
/// All of these.
[[nodiscard]] std::array<std::span<const MacAct>, 9> macActs();

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

// What several tables need

/// The identifier of the app that the step names.
[[nodiscard]] BundleID appOf(const Step& step);
/// The surface that the step names.
[[nodiscard]] SimulatedSurface& surfaceOf(const Step& step, scenarios::World& world);
/// Zero if the step has none.
[[nodiscard]] std::chrono::milliseconds durationOf(const Step& step);

/// An act that always works.
template <void (*act)(const Step&, scenarios::World&)>
Done does(const Step& step, scenarios::World& world) {
    act(step, world);
    return {};
}

/// The value that a word stands for; the table of verbs allows no other words.
template <class Rows>
auto meantBy(const Rows& rows, std::string_view word) {
    const auto row = std::ranges::find(rows, word, [](const auto& each) { return each.first; });
    return row == rows.end() ? rows.front().second : row->second;
}

// The limits of a simulated Mac's time. Beyond them, numbers would overflow.

/// Whether the wall clock can be moved by that much. If not, one line says why.
[[nodiscard]] Done clockCanMove(const SimulatedMac& mac, MainThread::Uptime by);
/// Whether that much time can pass. If not, one line says why.
[[nodiscard]] Done timeCanPass(const SimulatedMac& mac, MainThread::Uptime duration);

}  // namespace velko::script
