#pragma once

#include <expected>
#include <string>

#include "Velko/App/FaceParts.h"

/// What `velko status`, `velko list` and `velko history` print. docs/commands.schema.json describes the JSON.
/// Main thread.
namespace velko::commands {

inline constexpr int reportVersion = 1;  ///< of the JSON

/// Whether only what belongs in the bar shows, and the system has hidden the rest.
[[nodiscard]] bool isTidy(const AppController& controller);
/// Whether the tucked icons are out, and the system shows them.
[[nodiscard]] bool isRevealed(const AppController& controller);

[[nodiscard]] std::string statusText(const FaceParts& parts);
[[nodiscard]] std::string statusJson(const FaceParts& parts);
[[nodiscard]] std::string listText(const FaceParts& parts);
[[nodiscard]] std::string listJson(const FaceParts& parts);
// The earlier layouts, the newest first; or why their folder can't be read.
[[nodiscard]] std::expected<std::string, std::string> historyText(const FaceParts& parts);
[[nodiscard]] std::expected<std::string, std::string> historyJson(const FaceParts& parts);

}  // namespace velko::commands
