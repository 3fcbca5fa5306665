#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "Scenarios/Language/Step.h"
#include "Scenarios/World.h"

namespace velko::soak {

/// Chooses what happens next: events about apps that run, some more often than others, and waits between
/// them. Some waits are shorter than an activation, others last minutes. The same seed gives the same choices
/// on every machine.
class Chance final {
 public:
    explicit Chance(std::uint64_t seed) : random_(seed) {}

    /// Launches some apps that have their sections, and starts Velko.
    [[nodiscard]] std::vector<script::Step> beginning();
    /// The next event, or a wait. It may be impossible.
    [[nodiscard]] script::Step next(scenarios::World& world);

 private:
    [[nodiscard]] std::size_t below(std::size_t bound) { return random_() % bound; }
    template <class Range>
    [[nodiscard]] auto oneOf(const Range& range);
    [[nodiscard]] std::string wait();
    [[nodiscard]] std::string_view event();
    [[nodiscard]] std::optional<std::string> filledIn(std::string_view event, scenarios::World& world);
    [[nodiscard]] std::string withDigits(std::string part);

    std::mt19937_64 random_;
    bool waits_ = false;
};

}  // namespace velko::soak
