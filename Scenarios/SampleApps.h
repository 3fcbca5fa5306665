#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Simulator/Machine/SimulatedMac.h"
#include "VelkoCore/Layout/Layout.h"

namespace velko::scenarios {

/// A sample app, and the section in which its owner would put it.
struct SampleApp {
    const char* bundleID;
    const char* name;
    Section section;
    double iconWidth;
};

/// About thirty apps of a full menu bar, left to right.
[[nodiscard]] std::span<const SampleApp> sampleApps();

/// The app that is launched late in the morning.
[[nodiscard]] const SampleApp& latecomer();

/// What the simulated Mac needs to launch one of them.
[[nodiscard]] SimulatedApp appOf(const SampleApp& sample);

/// The sample app with that bundle identifier; null if there is none.
[[nodiscard]] const SampleApp* sampleAppWith(std::string_view bundleID);

/// The name of the app with that identifier: that of the sample app, or else the identifier's last part.
[[nodiscard]] std::string nameOf(std::string_view bundleID);

/// The bundle identifier for the name of a sample app. A text with a dot is an identifier itself.
[[nodiscard]] std::optional<BundleID> bundleIDOf(std::string_view app);

/// A layout with every sample app in its owner's section.
[[nodiscard]] Layout firstLayout();

}  // namespace velko::scenarios
