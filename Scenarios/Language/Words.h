#pragma once

#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace velko::script {

/// A word of a line, or a text in quotation marks.
struct Token {
    std::string text;
    bool isQuoted = false;

    /// Whether it is that word and not a text.
    [[nodiscard]] bool is(std::string_view word) const { return !isQuoted && text == word; }
};

/// Cuts a line into its words and texts. A comment is left out.
[[nodiscard]] std::expected<std::vector<Token>, std::string> tokensOf(std::string_view line);

/// Puts a text in quotation marks. Quotation marks and backslashes in it get a backslash.
[[nodiscard]] std::string inQuotes(std::string_view text);

/// A verb's pattern, taken apart.
struct Pattern {
    /// One part of the pattern: a word, an operand, or an operand after its word.
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
