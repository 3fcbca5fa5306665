#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Simulator/SimulatedMac.h"
#include "VelkoCore/Layout.h"

namespace velko::playground {

/// An app of the playground's Mac and where its owner would put it.
struct Neighbour {
    const char* bundleID;
    const char* name;
    Section section;
    double iconWidth;
};

/// About thirty apps as a busy menu bar has them, left to right.
[[nodiscard]] std::span<const Neighbour> neighbours();

/// The app that is launched late in the morning.
[[nodiscard]] const Neighbour& latecomer();

/// What the simulated Mac needs to launch one of them.
[[nodiscard]] SimulatedApp appOf(const Neighbour& neighbour);

/// The neighbour with that bundle identifier; null where there is none.
[[nodiscard]] const Neighbour* neighbourWith(std::string_view bundleID);

/// How the app with that identifier is called: as a neighbour, or else by the last part of it.
[[nodiscard]] std::string nameOf(std::string_view bundleID);

/// The bundle identifier that is meant by a neighbour's name or by an identifier, which has a dot.
[[nodiscard]] std::optional<BundleID> bundleIDOf(std::string_view app);

/// The layout that a first run writes: every app in its owner's section.
[[nodiscard]] Layout firstLayout();

}  // namespace velko::playground
