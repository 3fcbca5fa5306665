#pragma once

#include <expected>
#include <string>

#include "Velko/App/FaceParts.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Commands/Grammar.h"
#include "Velko/Commands/Messages.h"

/// What the commands do. Main thread.
namespace velko::commands {

/// What has come of a command.
struct Reply {
    int status = status::done;
    std::string out{};
    std::string error{};  ///< a sentence
};

[[nodiscard]] inline Reply refusal(std::string why) {
    return {.status = status::failed, .error = std::move(why)};
}

/// Carries out a command that is done at once. Those that take time are the desk's business.
[[nodiscard]] Reply perform(const Call& call, const FaceParts& parts);

/// The app that a text means: its identifier, its name, or the beginning of words of its name if only one
/// app fits. `others`: whether apps count that Velko knows but that have no icon now. If none or several
/// fit, a sentence says so, and lists them.
[[nodiscard]] std::expected<PresentApp, std::string> appMeant(const FaceParts& parts, const std::string& text,
                                                              bool others);

/// Why nothing can be hidden or brought out; nothing if it can.
[[nodiscard]] std::optional<std::string> whyHelpless(const AppValues& values);

}  // namespace velko::commands
