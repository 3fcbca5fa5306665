#pragma once

#include "Scenarios/Acts/Acts.h"

// Where the pointer travels, in a tenth of a second.

namespace velko::script {

/// To a place. One that is there already goes elsewhere on the shelf, and stays elsewhere.
[[nodiscard]] Done pointAt(const Step& step, scenarios::World& world);
/// To an app's icon that shows.
[[nodiscard]] Done pointAtIcon(const Step& step, scenarios::World& world);

}  // namespace velko::script
