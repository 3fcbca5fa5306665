#pragma once

#include <cstdio>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The program that people and scripts call: `velko`.
namespace velko::commands {

/// The name of the socket in its folder.
inline constexpr auto socketName = "velko.sock";

/// Prints a text at once. Returns whether that worked.
using Print = std::function<bool(std::string_view)>;
/// Prints into an open file, such as the standard output.
[[nodiscard]] Print printTo(std::FILE* file);

/// What a call of `velko` needs.
struct CallerSurroundings {
    std::filesystem::path socket;  ///< of the Velko to work
    std::filesystem::path folder;  ///< to which paths are relative
    std::string version;
    Print out;
    Print error;
};

/// The socket that the environment names, if it names one.
[[nodiscard]] std::optional<std::filesystem::path> socketInEnvironment();

/// Carries out a command line. Waits for the answer as long as the command says. Returns the exit status of
/// the process, which from now on ignores SIGPIPE.
[[nodiscard]] int runCommandLine(const std::vector<std::string>& words,
                                 const CallerSurroundings& surroundings);

}  // namespace velko::commands
