#pragma once

#include "tests/Soak/Walk.h"

namespace velko::soak {

/// A short script that breaks the same rule as `failure`. No step can be left out, and no wait can be much
/// shorter.
[[nodiscard]] Outcome shrink(const Outcome& failure);

}  // namespace velko::soak
