#include "Velko/Commands/GrammarTexts.h"

#include <algorithm>
#include <cstddef>

namespace velko::commands {

namespace {

constexpr std::size_t helpColumn = 46;

constexpr std::string_view exitStatus =
    "Exit status: 0, it is done; 1, it was refused or has failed; 2, it was not understood.";

constexpr std::string_view aboutApps =
    "APP is an app's identifier, or its name or the beginning of it if only one app fits. Case and accents "
    "do "
    "not count.";

std::string usageOf(const Option& option) {
    return std::string(option.word) + (option.value.name.empty() ? "" : " " + std::string(option.value.name));
}

std::string wordsOf(std::span<const std::string_view> words, std::string_view between) {
    std::string text;
    for (const std::string_view word : words) {
        text.append(text.empty() ? "" : between).append(word);
    }
    return text;
}

/// What the arguments of a command can be, where those are a few words: "SECTION: bar, tucked, buried".
std::string choicesOf(const Row& row) {
    std::string text;
    for (const Argument& argument : row.arguments) {
        if (argument.kind == Kind::app) {
            text.append("  ").append(aboutApps).append("\n");
        } else if (const auto words = wordsFor(argument.kind); !words.empty()) {
            text.append("  ").append(argument.name).append(": ").append(wordsOf(words, ", ")).append("\n");
        }
    }
    return text;
}

std::string helpLine(std::string left, std::string_view right) {
    left.resize(std::max(helpColumn, left.size() + 1), ' ');
    return left.append(right).append("\n");
}

}  // namespace

std::string usageOf(const Row& row) {
    std::string text(row.words);
    for (const Argument& argument : row.arguments) {
        if (!argument.name.empty()) {
            const bool mayLack = argument.isOptional;
            text.append(mayLack ? " [" : " ").append(argument.name).append(mayLack ? "]" : "");
        }
    }
    return row.option.word.empty() ? text : text + " [" + usageOf(row.option) + "]";
}

std::string helpText() {
    std::string text = "Works the Velko that runs, from a terminal or a script.\n\n";
    for (const Row& row : rows()) {
        text += helpLine("  velko " + usageOf(row), row.help);
    }
    return text.append("\n").append(aboutApps).append("\n").append(exitStatus).append("\n");
}

std::string helpText(const Row& row) {
    std::string text = "velko " + usageOf(row) + "\n  " + std::string(row.help) + "\n";
    text += choicesOf(row);
    if (!row.option.word.empty()) {
        text += "  " + usageOf(row.option) + ": " + std::string(row.option.help) + "\n";
    }
    if (!row.more.empty()) {
        text += "  " + std::string(row.more) + "\n";
    }
    if (row.address != AddressRight::never) {
        text += "  Also as the address velko:" + std::string(row.words) +
                (row.address == AddressRight::afterAsking ? ", which asks first.\n" : ".\n");
    }
    return text;
}

// The manual page

namespace {

/// A text as man takes it: no word of it is a request, and dashes stay dashes.
std::string roff(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        escaped += character == '\\' ? "\\e" : character == '-' ? "\\-" : std::string(1, character);
    }
    return escaped.starts_with('.') || escaped.starts_with('\'') ? "\\&" + escaped : escaped;
}

}  // namespace

std::string manPage(std::string_view version) {
    std::string page = R"(.TH VELKO 1 "" "Velko )" + roff(version) + "\"\n.SH NAME\n" +
                       roff("velko - works the menu bar's tidier from a terminal or a script") +
                       "\n.SH SYNOPSIS\n";
    for (const Row& row : rows()) {
        page += ".B velko\n" + roff(usageOf(row)) + "\n.br\n";
    }
    page +=
        ".SH DESCRIPTION\nVelko hides menu\\-bar icons behind its broom. The commands work the Velko that "
        "runs; "
        "none of them starts it.\n" +
        roff(aboutApps) + "\n.SH COMMANDS\n";
    for (const Row& row : rows()) {
        page += ".TP\n.B " + roff(usageOf(row)) + "\n" + roff(row.help) + ".\n";
        for (const Argument& argument : row.arguments) {
            if (const auto words = wordsFor(argument.kind);
                !words.empty() && argument.kind != Kind::command) {
                page += roff(argument.name) + ": " + roff(wordsOf(words, ", ")) + ".\n";
            }
        }
        if (!row.option.word.empty()) {
            page += roff(usageOf(row.option)) + ": " + roff(row.option.help) + ".\n";
        }
        page += row.more.empty() ? "" : roff(row.more) + "\n";
    }
    page += ".SH ADDRESSES\nSome commands are addresses too, for shortcuts and links:\n";
    for (const Row& row : rows()) {
        if (row.address != AddressRight::never) {
            page += ".TP\n.B velko:" + roff(row.words) + "\n" +
                    (row.address == AddressRight::freely ? "at once.\n" : "after the user has agreed.\n");
        }
    }
    return page + ".SH EXIT STATUS\n" + roff(exitStatus) +
           "\n.SH ENVIRONMENT\n.TP\n.B VELKO_SOCKET\nthe socket of the Velko to work, instead of the usual "
           "one.\n";
}

}  // namespace velko::commands
