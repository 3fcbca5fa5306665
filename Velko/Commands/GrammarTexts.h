#pragma once

#include <string>
#include <string_view>

#include "Velko/Commands/Grammar.h"

/// What is written about the commands, made from their table.
namespace velko::commands {

/// How a command is written: "place APP SECTION", "wait-until STATE [--timeout SECONDS]".
[[nodiscard]] std::string usageOf(const Row& row);

/// All commands, one line for each.
[[nodiscard]] std::string helpText();
/// One command.
[[nodiscard]] std::string helpText(const Row& row);

/// The manual page velko(1), in the language of man.
[[nodiscard]] std::string manPage(std::string_view version);

/// The completions for "bash", "fish" or "zsh". For apps they ask the Velko that runs.
[[nodiscard]] std::string completionsFor(std::string_view shell);

}  // namespace velko::commands
