#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace velko::playground {

/// What the command line asks for.
struct Options {
    enum class Command {
        servePage,
        playWeek,
        playScript,    ///< the scenario in the file `path`
        exportLayout,  ///< to `path`
        importLayout,  ///< from `path`
        importFrom,    ///< the settings of another organiser, below the home folder `path`
        sort,
        help,
    };

    static constexpr std::int64_t fastest = 1'000'000'000;

    Command command = Command::servePage;
    std::filesystem::path path{};
    std::optional<std::filesystem::path> home{};    ///< the folder to use instead of the usual one
    std::optional<std::filesystem::path> layout{};  ///< the layout file to use instead of the usual one
    std::optional<std::int64_t> speed{};  ///< how many times real time; without it, as fast as possible
    std::optional<std::uint16_t> port{};  ///< of the page; without it, any free port
    bool mayOpen = true;                  ///< whether the program may open the page

    bool operator==(const Options&) const = default;
};

/// Reads the arguments after the program's name. If they are wrong, one line says why.
[[nodiscard]] std::expected<Options, std::string> parseOptions(const std::vector<std::string>& arguments);

/// The text of --help.
[[nodiscard]] std::string helpText();

}  // namespace velko::playground
