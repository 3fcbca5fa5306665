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

/// Chooses what happens next: weighted events about apps that are there, with waits between them that reach
/// from nothing over less than an activation to minutes. Gives the same on every machine.
class Chance final {
 public:
    explicit Chance(std::uint64_t seed) : random_(seed) {}

    /// Some apps that have their places, and Velko.
    [[nodiscard]] std::vector<script::Step> beginning();
    /// The next event, or a wait. It may turn out not to be possible.
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
