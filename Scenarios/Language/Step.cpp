#include "Scenarios/Language/Step.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <ranges>
#include <span>
#include <system_error>
#include <vector>

#include "Scenarios/Language/Verbs.h"
#include "Scenarios/Language/Words.h"
#include "Scenarios/SampleApps.h"

namespace velko::script {

namespace {

using Done = std::expected<void, std::string>;

std::unexpected<std::string> mistake(std::string message) {
    return std::unexpected(std::move(message));
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

bool isFileName(std::string_view text) {
    return !text.empty() && text.front() != '.' && std::ranges::all_of(text, [](char character) {
        return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '.' ||
               character == '-' || character == '_';
    });
}

/// Reads one line.
class Reading {
 public:
    Reading(const VerbRow& row, std::span<const Token> operands)
        : pattern_(Pattern::of(row.pattern)),
          text_(row.pattern),
          rest_(operands),
          step_{.verb = row.verb, .control = std::string(row.control)} {}

    [[nodiscard]] std::expected<std::optional<Step>, std::string> read() {
        for (const auto& part : pattern_.parts) {
            if (!part.isOptional) {
                if (const auto done = operand(part.operand); !done) {
                    return mistake(done.error());
                }
            }
        }
        while (!rest_.empty()) {
            if (const auto done = optionalPart(); !done) {
                return mistake(done.error());
            }
        }
        return step_;
    }

 private:
    [[nodiscard]] Done operand(std::string_view name) {
        if (rest_.empty()) {
            return mistake(std::string(name) + " is missing. It is written: " + std::string(text_));
        }
        const std::string token = rest_.front().text;
        rest_ = rest_.subspan(1);
        if (name == "DURATION") {
            return duration(token);
        }
        if (const auto* number = numberOperand(name)) {
            step_.*(number->field) = wholeNumber(token);
            const auto value = (step_.*(number->field)).value_or(number->least - 1);
            return value >= number->least && value <= number->most
                       ? Done()
                       : mistake(inQuotes(token) + " is not a whole number from " +
                                 std::to_string(number->least) + " to " + std::to_string(number->most) + ".");
        }
        if (const auto* words = wordOperand(name)) {
            step_.word = token;
            const auto allowed = wordsOf(words->words);
            return std::ranges::find(allowed, token) != allowed.end()
                       ? Done()
                       : mistake(inQuotes(token) + " is none of: " + std::string(words->words) + ".");
        }
        if (name == "CONTROL") {
            step_.control = token;
            return {};
        }
        if (name == "VALUE") {
            step_.value = token;
            return {};
        }
        return name == "APP" ? app(token) : words(name, token);
    }

    [[nodiscard]] Done app(const std::string& token) {
        step_.app = token;
        return scenarios::bundleIDOf(token) ? Done()
                                            : mistake("No neighbour is called " + inQuotes(token) +
                                                      ", and it is no bundle identifier.");
    }

    [[nodiscard]] Done words(std::string_view name, const std::string& token) {
        step_.text = token;
        return name == "TEXT" || isFileName(token)
                   ? Done()
                   : mistake(inQuotes(token) + " is no file's name of letters, digits, dots and dashes.");
    }

    [[nodiscard]] Done duration(const std::string& token) {
        const std::string unitName = rest_.empty() ? "" : rest_.front().text;
        const auto unit = std::ranges::find_if(units(), [&](const Unit& each) {
            return each.name == unitName || (each.name == "days" && unitName == "day");
        });
        const auto number = wholeNumber(token);
        if (!number || unit == units().end()) {
            return mistake(inQuotes(token + (rest_.empty() ? "" : " ") + unitName) +
                           " is no duration: a whole number, a space and ms, s, min, h or days.");
        }
        rest_ = rest_.subspan(1);
        if (*number < 0 || *number > longestMilliseconds / unit->milliseconds) {
            return mistake("A duration lies between nothing and ten years.");
        }
        step_.duration = std::chrono::milliseconds(*number * unit->milliseconds);
        return {};
    }

    [[nodiscard]] Done optionalPart() {
        const auto part = std::ranges::find_if(pattern_.parts, [&](const Pattern::Part& each) {
            return each.isOptional && (each.word.empty() || rest_.front().is(each.word));
        });
        if (part == pattern_.parts.end()) {
            return mistake(inQuotes(rest_.front().text) +
                           " is not understood here. It is written: " + std::string(text_));
        }
        const Pattern::Part taken = *part;
        pattern_.parts.erase(part);
        if (!taken.word.empty()) {
            rest_ = rest_.subspan(1);
        }
        if (taken.operand.empty()) {
            step_.flag = true;
            return {};
        }
        return operand(taken.operand);
    }

    Pattern pattern_;
    std::string_view text_;
    std::span<const Token> rest_;
    Step step_;
};

/// The verb with the most words among those that the line begins with; null when there is none.
const VerbRow* verbOf(const std::vector<Token>& tokens) {
    const VerbRow* best = nullptr;
    std::size_t most = 0;
    for (const VerbRow& row : verbs()) {
        const auto words = Pattern::of(row.pattern).verb;
        const bool begins = words.size() > most && words.size() <= tokens.size() &&
                            std::ranges::equal(words, tokens | std::views::take(words.size()),
                                               [](auto word, const Token& token) { return token.is(word); });
        if (begins) {
            best = &row;
            most = words.size();
        }
    }
    return best;
}

std::string noVerb(const std::vector<Token>& tokens) {
    std::string seconds;
    for (const VerbRow& row : verbs()) {
        const auto words = Pattern::of(row.pattern).verb;
        if (words.size() > 1 && tokens.front().is(words.front()) && !seconds.contains(words[1])) {
            seconds += (seconds.empty() ? "" : ", ") + std::string(words[1]);
        }
    }
    return seconds.empty() ? "There is no verb " + inQuotes(tokens.front().text) + "."
                           : "After \"" + tokens.front().text + "\" comes one of: " + seconds + ".";
}

}  // namespace

std::expected<std::optional<Step>, std::string> parse(std::string_view line) {
    const auto tokens = tokensOf(line);
    if (!tokens) {
        return mistake(tokens.error());
    }
    if (tokens->empty()) {
        return std::nullopt;
    }
    const VerbRow* verb = verbOf(*tokens);
    if (verb == nullptr) {
        return mistake(noVerb(*tokens));
    }
    return Reading(*verb, std::span(*tokens).subspan(Pattern::of(verb->pattern).verb.size())).read();
}

// Printing

namespace {

bool isPlain(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char character) {
        return std::isalnum(static_cast<unsigned char>(character)) != 0 ||
               std::string_view("._+-:").find(character) != std::string_view::npos;
    });
}

std::string plainly(const std::string& text) {
    return isPlain(text) ? text : inQuotes(text);
}

std::string durationText(std::chrono::milliseconds duration) {
    const auto unit = std::ranges::find_if(
        units(), [&](const Unit& each) { return duration.count() % each.milliseconds == 0; });
    const auto number = duration.count() / unit->milliseconds;
    const bool isOneDay = number == 1 && unit->name == "days";
    return std::to_string(number) + ' ' + (isOneDay ? "day" : std::string(unit->name));
}

/// The text of an operand of the step; nothing if the step does not have it.
std::optional<std::string> operandText(const Step& step, std::string_view name) {
    if (const auto* number = numberOperand(name)) {
        const auto& value = step.*(number->field);
        return value ? std::optional(std::to_string(*value)) : std::nullopt;
    }
    if (wordOperand(name) != nullptr) {
        return step.word.empty() ? std::nullopt : std::optional(step.word);
    }
    if (name == "APP") {
        return plainly(step.app);
    }
    if (name == "CONTROL") {
        return plainly(step.control);
    }
    if (name == "VALUE") {
        return step.value ? std::optional(plainly(*step.value)) : std::nullopt;
    }
    if (name == "DURATION") {
        return durationText(step.duration.value_or(std::chrono::milliseconds(0)));
    }
    return step.text ? std::optional(name == "FILE" ? *step.text : inQuotes(*step.text)) : std::nullopt;
}

}  // namespace

std::string print(const Step& step) {
    const auto row = std::ranges::find_if(verbs(), [&](const VerbRow& each) {
        return each.verb == step.verb && (each.control.empty() || each.control == step.control);
    });
    const Pattern pattern = Pattern::of(row->pattern);
    std::string line;
    const auto add = [&line](std::string_view word) { line.append(line.empty() ? "" : " ").append(word); };
    std::ranges::for_each(pattern.verb, add);
    for (const auto& part : pattern.parts) {
        if (part.operand.empty() && step.flag) {
            add(part.word);
        } else if (const auto text = part.operand.empty() ? std::nullopt : operandText(step, part.operand)) {
            if (!part.word.empty()) {
                add(part.word);
            }
            add(*text);
        }
    }
    return line;
}

}  // namespace velko::script
