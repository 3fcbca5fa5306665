#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Scenarios/Language/Step.h"

namespace velko::soak {

using Steps = std::vector<script::Step>;

/// The result of a walk.
struct Outcome {
    Steps steps;                        ///< those that were possible, in order
    std::optional<std::string> breach;  ///< the rule that the last of them broke
    std::vector<std::string> log;       ///< what Velko logged

    /// The words that name the rule that was broken.
    [[nodiscard]] std::string rule() const { return breach ? breach->substr(0, breach->find(':')) : ""; }
};

/// Lets random things happen to Velko and its Mac, until `length` of simulated time has passed or a rule is
/// broken. The same seed gives the same walk.
[[nodiscard]] Outcome walk(std::uint64_t seed, std::chrono::milliseconds length);

/// Performs steps on a new Mac until a rule is broken. Steps that are not possible are left out.
[[nodiscard]] Outcome replay(const Steps& steps);

}  // namespace velko::soak
