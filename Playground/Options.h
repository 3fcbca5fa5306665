#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace velko::playground {

/// What the command line asks for.
struct Options {
    enum class Command {
        playMorning,
        exportLayout,  ///< to `path`
        importLayout,  ///< from `path`
        importFrom,    ///< another organiser's preferences below the home folder `path`
        sort,
        help,
    };

    Command command = Command::playMorning;
    std::filesystem::path path{};
    std::optional<std::filesystem::path> layout{};  ///< a layout file instead of the kept one

    bool operator==(const Options&) const = default;
};

/// Reads the arguments that follow the program's name; on bad ones, one clear line.
[[nodiscard]] std::expected<Options, std::string> parseOptions(const std::vector<std::string>& arguments);

/// The text of --help.
[[nodiscard]] std::string helpText();

/// The folder that is kept between runs, by the desktop's convention for an app's data.
[[nodiscard]] std::filesystem::path keptFolder();

}  // namespace velko::playground
