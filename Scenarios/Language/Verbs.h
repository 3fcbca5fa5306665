#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "Scenarios/Language/Step.h"

namespace velko::script {

/// How a verb is written: its own words, then its operands. A word in capitals is an operand. Parts in
/// brackets may be left out, and may come in any order.
struct VerbRow {
    Verb verb;
    std::string_view pattern;
    std::string_view control{};  ///< the step's, where several rows have one verb
};

/// All verbs, each once.
[[nodiscard]] std::span<const VerbRow> verbs();

/// An operand that is a whole number.
struct NumberOperand {
    std::string_view name;
    std::optional<std::int64_t> Step::* field;
    std::int64_t least;
    std::int64_t most;
};

/// An operand that is one of a few words. `words` has a space between two.
struct WordOperand {
    std::string_view name;
    std::string_view words;
};

/// The operand of that name, or null. The others are APP, CONTROL, VALUE, TEXT, FILE and
/// DURATION.
[[nodiscard]] const NumberOperand* numberOperand(std::string_view name);
[[nodiscard]] const WordOperand* wordOperand(std::string_view name);

/// A unit of durations, in milliseconds.
struct Unit {
    std::string_view name;
    std::int64_t milliseconds;
};

/// From the longest to the shortest. "day" means the same as "days".
[[nodiscard]] std::span<const Unit> units();

inline constexpr std::int64_t longestMilliseconds = std::int64_t{3650} * 86'400'000;
inline constexpr std::size_t longestLine = 1000;  ///< bytes

}  // namespace velko::script
