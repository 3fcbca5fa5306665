#pragma once

#include "Scenarios/Acts/Acts.h"

// What becomes of layout files.

namespace velko::script {

/// Another program puts an app into a section in Velko's file.
[[nodiscard]] Done placeInFile(const Step& step, scenarios::World& world);
/// The file is overwritten with what is no layout.
[[nodiscard]] Done spoilFile(const Step& step, scenarios::World& world);
/// The user chooses the file to export to, or closes the panel without.
[[nodiscard]] Done exportLayout(const Step& step, scenarios::World& world);
[[nodiscard]] Done importLayout(const Step& step, scenarios::World& world);

}  // namespace velko::script
