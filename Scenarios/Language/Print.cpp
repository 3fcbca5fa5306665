#include <algorithm>
#include <cctype>

#include "Scenarios/Language/Pattern.h"
#include "Scenarios/Language/Step.h"
#include "Scenarios/Language/Tokens.h"
#include "Scenarios/Language/Verbs.h"

namespace velko::script {

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

/// What the step has for an operand; nothing where it has none.
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
