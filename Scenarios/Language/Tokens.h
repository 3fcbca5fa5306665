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

/// Cuts a line into its words and texts, up to a comment.
[[nodiscard]] std::expected<std::vector<Token>, std::string> tokensOf(std::string_view line);

/// A text in quotation marks; those within it, and backslashes, get a backslash.
[[nodiscard]] std::string inQuotes(std::string_view text);

}  // namespace velko::script
