#pragma once

#include <string_view>
#include <vector>

namespace velko::script {

/// A verb's pattern, taken apart.
struct Pattern {
    /// One thing that a verb is about: a word, an operand, or an operand that its word introduces.
    struct Part {
        std::string_view word;     ///< empty: none
        std::string_view operand;  ///< empty: none
        bool isOptional = false;
    };

    std::vector<std::string_view> verb;  ///< the verb's own words
    std::vector<Part> parts;             ///< the optional ones last

    [[nodiscard]] static Pattern of(std::string_view text);
};

/// Cuts text at single spaces.
[[nodiscard]] std::vector<std::string_view> wordsOf(std::string_view text);

}  // namespace velko::script
