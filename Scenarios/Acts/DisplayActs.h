#pragma once

#include "Scenarios/Acts/Acts.h"

namespace velko::script {

/// Puts other displays in place of those that are there, side by side; the first has the menu bar.
[[nodiscard]] Done arrangeDisplays(const Step& step, scenarios::World& world);

}  // namespace velko::script
