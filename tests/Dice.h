#pragma once

#include <cstddef>
#include <random>

namespace velko {

/// Chance that is the same again for the same seed.
class Dice final {
 public:
    explicit Dice(unsigned seed) : random_(seed) {}

    /// Less than the number of sides.
    std::size_t roll(std::size_t sides) { return random_() % sides; }
    bool isOneIn(std::size_t chances) { return roll(chances) == 0; }
    const auto& oneOf(const auto& choices) { return choices.at(roll(choices.size())); }

 private:
    std::mt19937 random_;
};

}  // namespace velko
