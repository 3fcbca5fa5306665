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

/// What is wrong with a line, or what went wrong when it was played.
struct Mistake {
    std::size_t line = 1;
    std::string what;

    bool operator==(const Mistake&) const = default;
};

/// Reads a whole scenario. The error is about the first line that cannot be read.
[[nodiscard]] std::expected<std::vector<Line>, Mistake> read(std::string_view text);

/// Plays a scenario to its end, or to the first step that fails or breaks a rule. `before` is called before
/// each step; when it returns false, the scenario ends there.
[[nodiscard]] std::expected<void, Mistake> play(const std::vector<Line>& scenario, scenarios::World& world,
                                                const std::function<bool(const Step&)>& before = {});

}  // namespace velko::script
