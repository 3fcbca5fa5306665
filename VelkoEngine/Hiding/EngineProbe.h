#pragma once

#include <string>

#include "VelkoEngine/Ports/Platform.h"

namespace velko {

/// Whether hiding can work on this system and what is missing, as lines for the log. Main thread.
[[nodiscard]] std::string engineProbeReport(const Platform& platform);

}  // namespace velko
