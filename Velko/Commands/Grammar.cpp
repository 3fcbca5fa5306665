#include "Velko/Commands/Grammar.h"

#include <algorithm>
#include <charconv>
#include <ranges>
#include <system_error>
#include <utility>

namespace velko::commands {

namespace {

using Words = std::span<const std::string>;
using Understood = std::expected<void, std::string>;

std::unexpected<std::string> mistake(std::string text) {
    return std::unexpected(std::move(text));
}

std::string inMarks(std::string_view text) {
    return "“" + std::string(text) + "”";
}

std::string anyOf(std::span<const std::string_view> words) {
    std::string text;
    for (const std::string_view word : words) {
        text.append(text.empty() ? "" : word == words.back() ? " or " : ", ").append(word);
    }
    return text;
}

bool isWholeNumber(std::string_view text, std::int64_t most) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 1 && number <= most;
}

/// Whether a word is of its kind.
Understood check(const Argument& argument, std::string_view word) {
    const auto allowed = wordsFor(argument.kind);
    if (!allowed.empty() && std::ranges::find(allowed, word) == allowed.end()) {
        return mistake(inMarks(word) + " is not " + anyOf(allowed) + ".");
    }
    if (argument.kind == Kind::number && !isWholeNumber(word, greatestNumber)) {
        return mistake(inMarks(word) + " is no number of the list.");
    }
    if (argument.kind == Kind::seconds && !isWholeNumber(word, longestTimeout)) {
        return mistake(inMarks(word) + " is no whole number of seconds from 1 to " +
                       std::to_string(longestTimeout) + ".");
    }
    if (word.empty() && argument.kind != Kind::text) {
        return mistake(std::string(argument.name) + " is empty.");
    }
    return {};
}

/// How many of the words a command has; 0 if they do not begin with it.
std::size_t wordsTaken(const Row& row, Words words) {
    std::size_t taken = 0;
    for (const auto part : row.words | std::views::split(' ')) {
        if (taken == words.size() || words[taken] != std::string_view(part)) {
            return 0;
        }
        ++taken;
    }
    return taken;
}

/// Reads the words that follow a command.
class Reading {
 public:
    explicit Reading(const Row& row) : row_(row), call_{.verb = row.verb} {}

    std::expected<Call, std::string> read(Words words) {
        bool mayBeOption = true;
        for (; !words.empty(); words = words.subspan(1)) {
            const std::string& word = words.front();
            if (mayBeOption && word == "--") {
                mayBeOption = false;
                continue;
            }
            const bool isOption = mayBeOption && word.size() > 1 && word.starts_with('-');
            if (const auto done = isOption ? option(words) : argument(word); !done) {
                return mistake(done.error());
            }
        }
        return finish();
    }

 private:
    Understood argument(const std::string& word) {
        const std::size_t index = call_.arguments.size();
        if (index == row_.arguments.size() || row_.arguments.at(index).name.empty()) {
            // The name of a command may be two words.
            if (row_.verb == Verb::help && index == 1) {
                call_.arguments.back() += ' ' + word;
                return {};
            }
            return mistake(inMarks(word) + " is one word too many for velko " + std::string(row_.words) +
                           ".");
        }
        call_.arguments.push_back(word);
        return {};
    }

    Understood option(Words& words) {
        const std::string_view word = words.front();
        const std::string_view name = word.substr(0, word.find('='));
        if (row_.option.word.empty() || name != row_.option.word) {
            return mistake("velko " + std::string(row_.words) + " has no option " + inMarks(name) + ".");
        }
        const Argument& value = row_.option.value;
        std::string given;
        if (name.size() < word.size()) {
            given = word.substr(name.size() + 1);
        } else if (!value.name.empty() && words.size() > 1) {
            words = words.subspan(1);
            given = words.front();
        } else if (!value.name.empty()) {
            return mistake(std::string(name) + " needs " + std::string(value.name) + ".");
        }
        if (value.name.empty() && name.size() < word.size()) {
            return mistake(std::string(name) + " takes no value.");
        }
        call_.options.insert_or_assign(std::string(name), given);
        return value.name.empty() ? Understood() : check(value, given);
    }

    std::expected<Call, std::string> finish() {
        for (std::size_t index = 0; index < row_.arguments.size(); ++index) {
            const Argument& wanted = row_.arguments.at(index);
            if (index >= call_.arguments.size()) {
                if (!wanted.name.empty() && !wanted.isOptional) {
                    return mistake("velko " + std::string(row_.words) + " needs " + std::string(wanted.name) +
                                   ".");
                }
            } else if (const auto done = check(wanted, call_.arguments[index]); !done) {
                return mistake(done.error());
            }
        }
        return std::move(call_);
    }

    const Row& row_;
    Call call_;
};

/// Why the words begin with no command.
std::string noCommand(const std::string& word) {
    std::vector<std::string_view> seconds;
    for (const Row& row : rows()) {
        if (row.words.starts_with(word + ' ')) {
            seconds.push_back(row.words.substr(word.size() + 1));
        }
    }
    return seconds.empty() ? "There is no command " + inMarks(word) + "."
                           : "After " + inMarks(word) + " comes " + anyOf(seconds) + ".";
}

bool asksForHelp(const std::string& word) {
    return word == "--help" || word == "-h";
}

Understood checkSizes(Words words) {
    if (words.size() > mostWords) {
        return mistake("Too many words.");
    }
    const bool isBad = std::ranges::any_of(
        words, [](const std::string& word) { return word.size() > longestWord || word.contains('\0'); });
    return isBad ? mistake("A word is too long, or has a zero in it.") : Understood();
}

}  // namespace

std::expected<Call, std::string> parse(const std::vector<std::string>& words) {
    if (words.empty()) {
        return mistake("Say what to do.");
    }
    if (const auto fits = checkSizes(words); !fits) {
        return mistake(fits.error());
    }
    if (asksForHelp(words.front())) {
        return Call{.verb = Verb::help};
    }
    if (words.front() == "--version") {
        return Call{.verb = Verb::version};
    }
    for (const Row& row : rows()) {
        if (const std::size_t taken = wordsTaken(row, words); taken > 0) {
            const Words rest = Words(words).subspan(taken);
            if (!rest.empty() && asksForHelp(rest.front())) {
                return Call{.verb = Verb::help, .arguments = {std::string(row.words)}};
            }
            return Reading(row).read(rest);
        }
    }
    return mistake(noCommand(words.front()));
}

}  // namespace velko::commands
