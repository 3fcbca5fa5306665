#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The commands that people and scripts give Velko. One table says how each is written. The parser, the help,
/// the completions of shells and the manual page come from it.
namespace velko::commands {

enum class Verb {
    show,
    tuck,
    toggle,
    search,
    open,
    place,
    ask,
    present,
    list,
    status,
    layoutExport,
    layoutImport,
    historyRestore,
    history,
    log,
    waitUntil,
    completions,
    help,
    version,
};

/// What an argument is, or the value of an option.
enum class Kind { none, app, section, onOff, goal, shell, command, text, file, seconds, number };

struct Argument {
    std::string_view name{};  ///< as the help writes it: "APP"; empty: there is no such argument
    Kind kind = Kind::none;
    bool isOptional = false;
};

struct Option {
    std::string_view word{};  ///< "--json"; empty: there is no such option
    std::string_view help{};
    Argument value{};  ///< what follows the word, if anything
};

/// What an address may do that a page, a mail or a shortcut opens. Whoever opens it may not know what it
/// says.
enum class AddressRight {
    never,
    afterAsking,  ///< it changes something, so the user is asked
    freely,       ///< a stranger may do it
};

/// Who carries out a command.
enum class Place { velko, caller };

/// One command.
struct Row {
    static constexpr std::size_t mostArguments = 2;

    Verb verb;
    std::string_view words;  ///< "layout export"
    std::array<Argument, mostArguments> arguments{};
    Option option{};
    AddressRight address = AddressRight::never;
    Place place = Place::velko;
    std::string_view help;    ///< one line
    std::string_view more{};  ///< for the help on this command; may be empty
};

[[nodiscard]] std::span<const Row> rows();
[[nodiscard]] const Row& rowOf(Verb verb);
/// The row whose words these are, or null.
[[nodiscard]] const Row* rowNamed(std::string_view words);

/// The few words that an argument of that kind can be; none if it can be anything.
[[nodiscard]] std::span<const std::string_view> wordsFor(Kind kind);

/// A command that was understood: as many arguments as its row allows, each of its kind.
struct Call {
    Verb verb = Verb::help;
    std::vector<std::string> arguments{};
    std::map<std::string, std::string, std::less<>>
        options{};  ///< with their values; empty if they have none

    [[nodiscard]] bool has(std::string_view option) const { return options.contains(option); }
    /// The argument, or "" if it was left out.
    [[nodiscard]] std::string argument(std::size_t index) const {
        return index < arguments.size() ? arguments[index] : std::string();
    }
    bool operator==(const Call&) const = default;
};

inline constexpr std::size_t mostWords = 16;
inline constexpr std::size_t longestWord = 8192;       ///< bytes
inline constexpr std::size_t longestAddress = 2048;    ///< bytes
inline constexpr std::int64_t longestTimeout = 86400;  ///< seconds
inline constexpr std::int64_t greatestNumber = 999'999'999;

/// Understands what follows "velko" on a command line. If it is wrong, a sentence says why.
[[nodiscard]] std::expected<Call, std::string> parse(const std::vector<std::string>& words);

/// Understands an address: "velko:show", "velko://show?buried", "velko:place/Slack/tucked". It refuses what
/// addresses may never do.
[[nodiscard]] std::expected<Call, std::string> parseAddress(std::string_view address);

/// Whether a command line is one for `velko`: the program goes by that name, or the first argument is a
/// command.
[[nodiscard]] bool isCommandLine(std::string_view program, const std::vector<std::string>& arguments);

}  // namespace velko::commands
