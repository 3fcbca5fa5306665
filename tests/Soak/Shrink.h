#pragma once

#include <cstdint>
#include <string>

#include "tests/Soak/Walk.h"

namespace velko::soak {

/// A short script that breaks the same rule as `failure`. No step can be left out, and no wait can be much
/// shorter.
[[nodiscard]] Outcome shrink(const Outcome& failure);

/// Shrinks a failure, writes the short script into the current folder, and returns it with its path, to be
/// printed.
[[nodiscard]] std::string report(std::uint64_t seed, const Outcome& failure);

}  // namespace velko::soak
