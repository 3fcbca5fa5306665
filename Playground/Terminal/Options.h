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
        playScript,    ///< in the file `path`
        exportLayout,  ///< to `path`
        importLayout,  ///< from `path`
        importFrom,    ///< another organiser's preferences below the home folder `path`
        sort,
        help,
    };

    static constexpr std::int64_t fastest = 1'000'000'000;

    Command command = Command::servePage;
    std::filesystem::path path{};
    std::optional<std::filesystem::path> home{};    ///< a folder to keep things in instead of the usual one
    std::optional<std::filesystem::path> layout{};  ///< a layout file instead of the kept one
    std::optional<std::int64_t> speed{};            ///< of what is played; left out: as fast as it goes
    std::optional<std::uint16_t> port{};            ///< of the page; left out: any that is free
    bool mayOpen = true;                            ///< whether the page may open by itself

    bool operator==(const Options&) const = default;
};

/// Reads the arguments that follow the program's name; on bad ones, one clear line.
[[nodiscard]] std::expected<Options, std::string> parseOptions(const std::vector<std::string>& arguments);

/// The text of --help.
[[nodiscard]] std::string helpText();

}  // namespace velko::playground
