#pragma once

#include <cstdint>
#include <string>

#include "tests/Soak/Walk.h"

namespace velko::soak {

/// Shrinks a failure, writes the short script into the current folder, and prints it and its path.
[[nodiscard]] std::string report(std::uint64_t seed, const Outcome& failure);

}  // namespace velko::soak
