#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Scenarios/Language/Step.h"

namespace velko::soak {

using Steps = std::vector<script::Step>;

/// What came of a walk.
struct Outcome {
    Steps steps;                        ///< those that happened, in order
    std::optional<std::string> breach;  ///< what did not hold after the last of them
    std::vector<std::string> log;       ///< what Velko logged

    /// The words that name the rule that was broken.
    [[nodiscard]] std::string rule() const { return breach ? breach->substr(0, breach->find(':')) : ""; }
};

/// Lets random things happen to Velko and its Mac until `length` of simulated time has passed or something
/// does not hold. The same seed gives the same walk.
[[nodiscard]] Outcome walk(std::uint64_t seed, std::chrono::milliseconds length);

/// Performs steps on a new Mac until something does not hold. What can't happen is left out.
[[nodiscard]] Outcome replay(const Steps& steps);

}  // namespace velko::soak
