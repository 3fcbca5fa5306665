#include "Scenarios/Language/Words.h"

#include <algorithm>
#include <cctype>

#include "Scenarios/Language/Verbs.h"

namespace velko::script {

namespace {

constexpr std::string_view blanks = " \t\r";

bool isControl(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return (byte < 0x20 && blanks.find(character) == std::string_view::npos) || byte == 0x7F;
}

/// Takes the text after an opening quotation mark, and the closing one.
std::expected<std::string, std::string> takeQuoted(std::string_view& rest) {
    std::string text;
    for (std::size_t at = 0; at < rest.size(); ++at) {
        if (rest[at] == '"') {
            rest.remove_prefix(at + 1);
            return text;
        }
        const bool isEscape = rest[at] == '\\' && at + 1 < rest.size();
        text += rest[isEscape ? ++at : at];
    }
    return std::unexpected("A text has no closing quotation mark.");
}

}  // namespace

std::expected<std::vector<Token>, std::string> tokensOf(std::string_view line) {
    if (line.size() > longestLine) {
        return std::unexpected("The line is longer than " + std::to_string(longestLine) + " bytes.");
    }
    if (std::ranges::any_of(line, isControl)) {
        return std::unexpected("There is a control character in the line.");
    }
    std::vector<Token> tokens;
    for (auto start = line.find_first_not_of(blanks); start != std::string_view::npos;
         start = line.find_first_not_of(blanks)) {
        line.remove_prefix(start);
        if (line.front() == '#') {
            break;
        }
        if (line.front() != '"') {
            const auto end = std::min(line.find_first_of(blanks), line.size());
            tokens.push_back({.text = std::string(line.substr(0, end))});
            line.remove_prefix(end);
            continue;
        }
        line.remove_prefix(1);
        auto text = takeQuoted(line);
        if (!text) {
            return std::unexpected(std::move(text).error());
        }
        tokens.push_back({.text = *std::move(text), .isQuoted = true});
    }
    return tokens;
}

std::string inQuotes(std::string_view text) {
    std::string result = "\"";
    for (const char character : text) {
        result += character == '"' || character == '\\' ? "\\" : "";
        result += character;
    }
    return result + '"';
}

// Patterns

namespace {

bool isOperand(std::string_view word) {
    return !word.empty() && std::isupper(static_cast<unsigned char>(word.front())) != 0;
}

Pattern::Part optionalPart(std::string_view inBrackets) {
    Pattern::Part part{.word = {}, .operand = {}, .isOptional = true};
    for (const auto word : wordsOf(inBrackets)) {
        (isOperand(word) ? part.operand : part.word) = word;
    }
    return part;
}

}  // namespace

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    while (!text.empty()) {
        const auto end = text.find(' ');
        words.push_back(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return words;
}

Pattern Pattern::of(std::string_view text) {
    Pattern pattern;
    const auto bracket = text.find('[');
    for (const auto word : wordsOf(text.substr(0, bracket))) {
        if (isOperand(word)) {
            pattern.parts.push_back({.word = {}, .operand = word});
        } else {
            pattern.verb.push_back(word);
        }
    }
    for (auto from = bracket; from != std::string_view::npos; from = text.find('[', from + 1)) {
        const auto to = text.find(']', from);
        pattern.parts.push_back(optionalPart(text.substr(from + 1, to - from - 1)));
    }
    return pattern;
}

}  // namespace velko::script
