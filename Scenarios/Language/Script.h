#pragma once

#include <cstddef>
#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Scenarios/Language/Step.h"
#include "Scenarios/World.h"

namespace velko::script {

/// A step and where it stands in its file.
struct Line {
    std::size_t number = 1;
    Step step;

    bool operator==(const Line&) const = default;
};

/// What is wrong with a line, or came of it.
struct Mistake {
    std::size_t line = 1;
    std::string what;

    bool operator==(const Mistake&) const = default;
};

/// Reads a whole scenario; the first line that can't be read is a mistake.
[[nodiscard]] std::expected<std::vector<Line>, Mistake> read(std::string_view text);

/// Plays a scenario up to its end, or to the first step that fails or after which something does not hold
/// that always must. `before` is told of each step, and may end it there by answering no.
[[nodiscard]] std::expected<void, Mistake> play(const std::vector<Line>& scenario, scenarios::World& world,
                                                const std::function<bool(const Step&)>& before = {});

}  // namespace velko::script
