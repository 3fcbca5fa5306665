#pragma once

#include "Playground/Script/Acts.h"

// What becomes of layout files.

namespace velko::script {

/// Another program puts an app into a section in Velko's file.
[[nodiscard]] Done placeInFile(const Step& step, playground::Stage& stage);
/// The file is overwritten with what is no layout.
[[nodiscard]] Done spoilFile(const Step& step, playground::Stage& stage);
/// The user chooses the file to export to, or closes the panel without.
[[nodiscard]] Done exportLayout(const Step& step, playground::Stage& stage);
[[nodiscard]] Done importLayout(const Step& step, playground::Stage& stage);

}  // namespace velko::script
