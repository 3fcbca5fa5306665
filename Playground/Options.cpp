#include "Playground/Options.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <string_view>

namespace velko::playground {

namespace {

using Command = Options::Command;

/// An option by which the program does something else than play the morning.
struct CommandOption {
    std::string_view word;
    Command command;
    std::string_view wants;  ///< what must follow it; empty for nothing
};

constexpr std::array commandOptions{
    CommandOption{"--export", Command::exportLayout, "a file"},
    CommandOption{"--import", Command::importLayout, "a file"},
    CommandOption{"--import-from", Command::importFrom, "a home folder"},
    CommandOption{"--sort", Command::sort, ""},
    CommandOption{"--help", Command::help, ""},
    CommandOption{"-h", Command::help, ""},
};

using Arguments = std::vector<std::string>;

/// Takes the value that must follow an option.
std::expected<std::filesystem::path, std::string> valueOf(Arguments::const_iterator& option,
                                                          Arguments::const_iterator end,
                                                          std::string_view wants) {
    const std::string word = *option;
    if (std::next(option) == end || std::next(option)->empty()) {
        return std::unexpected(word + " needs " + std::string(wants) + ".");
    }
    return *++option;
}

}  // namespace

std::expected<Options, std::string> parseOptions(const Arguments& arguments) {
    Options options;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        const auto* const found = std::ranges::find(commandOptions, *argument, &CommandOption::word);
        if (*argument == "--layout") {
            const auto file = valueOf(argument, arguments.end(), "a file");
            if (!file || options.layout) {
                return std::unexpected(file ? "--layout is given twice." : file.error());
            }
            options.layout = *file;
        } else if (found == commandOptions.end()) {
            return std::unexpected("Unknown argument \"" + *argument + "\"; try --help.");
        } else if (options.command != Command::playMorning) {
            return std::unexpected("Only one thing at a time: " + *argument + " is one too many.");
        } else {
            options.command = found->command;
            if (!found->wants.empty()) {
                const auto path = valueOf(argument, arguments.end(), found->wants);
                if (!path) {
                    return std::unexpected(path.error());
                }
                options.path = *path;
            }
        }
    }
    return options;
}

std::string helpText() {
    return "Plays a morning of Velko on a simulated Mac and draws its menu bar after each step.\n"
           "\n"
           "usage: ./run [--layout FILE] [--export FILE | --import FILE | --import-from HOME | --sort]\n"
           "\n"
           "  --layout FILE       use this layout file instead of the one that is kept between runs;\n"
           "                      a file that Velko cannot read is shown as Velko would show it\n"
           "  --export FILE       write the layout to a file for another Mac\n"
           "  --import FILE       merge such a file into the layout\n"
           "  --import-from HOME  look below a home folder for the preferences of another menu-bar\n"
           "                      organiser, and say what Velko can take over\n"
           "  --sort              sort the apps card by card\n"
           "  --help              show this text\n"
           "\n"
           "The layout that is kept is " +
           (keptFolder() / "layout.json").string() + ".\n";
}

std::filesystem::path keptFolder() {
    const auto fromEnvironment = [](const char* name) {
        const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): before any thread starts
        return std::filesystem::path(value == nullptr ? "" : value);
    };
    const auto data = fromEnvironment("XDG_DATA_HOME");
    if (data.is_absolute()) {
        return data / "velko-playground";
    }
    const auto home = fromEnvironment("HOME");
    return (home.is_absolute() ? home / ".local" / "share" : std::filesystem::temp_directory_path()) /
           "velko-playground";
}

}  // namespace velko::playground
