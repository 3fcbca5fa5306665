#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Simulator/Machine/SimulatedMac.h"
#include "VelkoCore/Layout/Layout.h"

namespace velko::scenarios {

/// An app of the playground's Mac and where its owner would put it.
struct SampleApp {
    const char* bundleID;
    const char* name;
    Section section;
    double iconWidth;
};

/// About thirty apps as a busy menu bar has them, left to right.
[[nodiscard]] std::span<const SampleApp> sampleApps();

/// The app that is launched late in the morning.
[[nodiscard]] const SampleApp& latecomer();

/// What the simulated Mac needs to launch one of them.
[[nodiscard]] SimulatedApp appOf(const SampleApp& neighbour);

/// The neighbour with that bundle identifier; null where there is none.
[[nodiscard]] const SampleApp* sampleAppWith(std::string_view bundleID);

/// How the app with that identifier is called: as a neighbour, or else by the last part of it.
[[nodiscard]] std::string nameOf(std::string_view bundleID);

/// The bundle identifier that is meant by a neighbour's name or by an identifier, which has a dot.
[[nodiscard]] std::optional<BundleID> bundleIDOf(std::string_view app);

/// The layout that a first run writes: every app in its owner's section.
[[nodiscard]] Layout firstLayout();

}  // namespace velko::scenarios
