#include "Playground/Terminal/Options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

#include "Playground/Terminal/Folders.h"

namespace velko::playground {

namespace {

using Command = Options::Command;

/// An option that makes the program do something else than serve its page.
struct CommandOption {
    std::string_view word;
    Command command;
    std::string_view wants;  ///< what must follow the option; empty if nothing must
};

constexpr std::array commandOptions{
    CommandOption{"--terminal", Command::playWeek, ""},
    CommandOption{"--script", Command::playScript, "a file"},
    CommandOption{"--export", Command::exportLayout, "a file"},
    CommandOption{"--import", Command::importLayout, "a file"},
    CommandOption{"--import-from", Command::importFrom, "a home folder"},
    CommandOption{"--sort", Command::sort, ""},
    CommandOption{"--help", Command::help, ""},
    CommandOption{"-h", Command::help, ""},
};

using Arguments = std::vector<std::string>;

/// Reads the value that must follow an option.
std::expected<std::string, std::string> valueOf(Arguments::const_iterator& option,
                                                Arguments::const_iterator end, std::string_view wants) {
    const std::string word = *option;
    if (std::next(option) == end || std::next(option)->empty()) {
        return std::unexpected(word + " needs " + std::string(wants) + ".");
    }
    return *++option;
}

/// A whole number from 1 to `most`.
std::optional<std::int64_t> numberIn(const std::string& text, std::int64_t most) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && number >= 1 && number <= most ? std::optional(number) : std::nullopt;
}

/// Turns arguments into options.
class Reading {
 public:
    explicit Reading(const Arguments& arguments) : argument_(arguments.begin()), end_(arguments.end()) {}

    std::expected<Options, std::string> read() {
        for (; argument_ != end_ && problem_.empty(); ++argument_) {
            if (*argument_ == "--layout") {
                readLayout();
            } else if (*argument_ == "--home") {
                readHome();
            } else if (*argument_ == "--speed") {
                readSpeed();
            } else if (*argument_ == "--port") {
                readPort();
            } else if (*argument_ == "--no-open") {
                options_.mayOpen = false;
            } else {
                readCommand();
            }
        }
        if (!hasCommand_ && (options_.layout || options_.speed)) {
            options_.command = Command::playWeek;
        }
        if (problem_.empty()) {
            problem_ = misfit();
        }
        return problem_.empty() ? std::expected<Options, std::string>(options_) : std::unexpected(problem_);
    }

 private:
    /// Why two of the options do not fit together; empty if they do.
    [[nodiscard]] std::string misfit() const {
        const bool plays = options_.command == Command::playWeek || options_.command == Command::playScript;
        if (options_.speed && !plays) {
            return "--speed is for what is played.";
        }
        const bool isForPage = options_.port || !options_.mayOpen;
        return isForPage && options_.command != Command::servePage ? "--port and --no-open are for the page."
                                                                   : "";
    }

    std::string value(std::string_view wants) {
        auto value = valueOf(argument_, end_, wants);
        if (!value) {
            problem_ = value.error();
        }
        return value.value_or("");
    }

    void readLayout() {
        const auto file = value("a file");
        if (problem_.empty() && options_.layout) {
            problem_ = "--layout is given twice.";
        }
        options_.layout = file;
    }

    void readHome() {
        const auto folder = value("a folder");
        if (problem_.empty() && options_.home) {
            problem_ = "--home is given twice.";
        }
        options_.home = folder;
    }

    void readPort() {
        const auto port = numberIn(value("a number"), std::numeric_limits<std::uint16_t>::max());
        if (problem_.empty() && !port) {
            problem_ = "--port is a whole number from 1 to 65535.";
        }
        options_.port = static_cast<std::uint16_t>(port.value_or(0));
    }

    void readSpeed() {
        options_.speed = numberIn(value("a number"), Options::fastest);
        if (problem_.empty() && !options_.speed) {
            problem_ = "--speed is a whole number from 1 to " + std::to_string(Options::fastest) + ".";
        }
    }

    void readCommand() {
        const auto* const found = std::ranges::find(commandOptions, *argument_, &CommandOption::word);
        if (found == commandOptions.end()) {
            problem_ = "Unknown argument \"" + *argument_ + "\"; try --help.";
        } else if (std::exchange(hasCommand_, true)) {
            problem_ = "Only one thing at a time: " + *argument_ + " is one too many.";
        } else {
            options_.command = found->command;
            options_.path = found->wants.empty() ? std::string() : value(found->wants);
        }
    }

    Arguments::const_iterator argument_;
    Arguments::const_iterator end_;
    Options options_;
    bool hasCommand_ = false;
    std::string problem_;
};

}  // namespace

std::expected<Options, std::string> parseOptions(const Arguments& arguments) {
    return Reading(arguments).read();
}

std::string helpText() {
    const auto home = homeFolder();
    return "Runs Velko on a simulated Mac and serves it as a page, on this machine alone.\n"
           "\n"
           "usage: ./run [--home DIR] [--port N] [--no-open]\n"
           "       ./run [--home DIR] [--layout FILE] [--terminal | --script FILE] [--speed N]\n"
           "       ./run [--home DIR] [--layout FILE] [--export FILE | --import FILE | --import-from HOME |\n"
           "             --sort]\n"
           "       ./run COMMAND...\n"
           "\n"
           "  --port N            serve on this port; otherwise on any that is free\n"
           "  --no-open           print the page's address, and don't open it\n"
           "  --home DIR          keep everything between runs in this folder\n"
           "  --terminal          play a week with Velko here in the terminal, in seconds\n"
           "  --script FILE       play the scenario in a file, with a fresh layout; docs/simulator.md tells\n"
           "                      how to write one. Status 2: it can't be read; 1: a step of it fails\n"
           "  --speed N           play N times as fast as life, to be watched\n"
           "  --layout FILE       use this layout file instead of the one that is kept between runs;\n"
           "                      what is played leaves it as it is, and one that Velko cannot read is\n"
           "                      shown as Velko would show it\n"
           "  --export FILE       write the layout to a file for another Mac\n"
           "  --import FILE       merge such a file into the layout\n"
           "  --import-from HOME  look below a home folder for the preferences of another menu-bar\n"
           "                      organiser, and say what Velko can take over\n"
           "  --sort              sort the apps card by card\n"
           "  --help              show this text\n"
           "  COMMAND             give the playground that runs a command; ./run help lists them\n"
           "\n"
           "The layout that is kept is " +
           (home ? (*home / "layout.json").string() : "in the folder that --home names: HOME is not set") +
           ".\n";
}

}  // namespace velko::playground
