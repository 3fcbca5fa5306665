#include "Scenarios/Language/Pattern.h"

#include <cctype>

namespace velko::script {

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
