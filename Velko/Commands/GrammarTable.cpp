#include <algorithm>

#include "Velko/Commands/Grammar.h"

namespace velko::commands {

namespace {

constexpr auto table = std::to_array<Row>({
    {.verb = Verb::show,
     .words = "show",
     .option = {.word = "--buried", .help = "the buried ones too"},
     .address = AddressRight::freely,
     .help = "bring out the tucked icons",
     .more = "They are tucked away again after the time that the settings say. If they are out already, that "
             "time begins anew."},
    {.verb = Verb::tuck, .words = "tuck", .address = AddressRight::freely, .help = "tuck the icons away"},
    {.verb = Verb::toggle,
     .words = "toggle",
     .address = AddressRight::freely,
     .help = "do what a click on the broom does"},
    {.verb = Verb::search,
     .words = "search",
     .arguments = {Argument{"TEXT", Kind::text, true}},
     .address = AddressRight::freely,
     .help = "open the search, perhaps with a text in its field"},
    {.verb = Verb::open,
     .words = "open",
     .arguments = {Argument{"APP", Kind::app}},
     .help = "open the menu of an app's icon, wherever the icon is"},
    {.verb = Verb::place,
     .words = "place",
     .arguments = {Argument{"APP", Kind::app}, Argument{"SECTION", Kind::section}},
     .address = AddressRight::afterAsking,
     .help = "say where an app's icons belong",
     .more = "For a new icon this answers the question where it goes."},
    {.verb = Verb::ask,
     .words = "ask",
     .arguments = {Argument{"SWITCH", Kind::onOff}},
     .address = AddressRight::afterAsking,
     .help = "whether Velko asks where new icons go"},
    {.verb = Verb::present,
     .words = "present",
     .arguments = {Argument{"SWITCH", Kind::onOff}},
     .address = AddressRight::afterAsking,
     .help = "show an audience only the icons that you chose for it, or end that",
     .more = "Presenting has to be switched on in the settings."},
    {.verb = Verb::list,
     .words = "list",
     .option = {.word = "--json", .help = "as JSON"},
     .help = "list the apps in the menu bar",
     .more =
         R"(The columns are: section, name, identifier, and "hidden" or "new". Tabs stand between them.)"},
    {.verb = Verb::status,
     .words = "status",
     .option = {.word = "--json", .help = "as JSON"},
     .help = "say what shows and what is wrong"},
    {.verb = Verb::layoutExport,
     .words = "layout export",
     .arguments = {Argument{"FILE", Kind::file}},
     .help = "write the layout to a file for another Mac"},
    {.verb = Verb::layoutImport,
     .words = "layout import",
     .arguments = {Argument{"FILE", Kind::file}},
     .help = "take over the places and settings of such a file"},
    {.verb = Verb::historyRestore,
     .words = "history restore",
     .arguments = {Argument{"NUMBER", Kind::number}},
     .help = "bring back an earlier layout, by its number in the list",
     .more = "Places and settings are as they were then. Apps that came later stay where they are. What is "
             "now is kept, so that you can restore it too."},
    {.verb = Verb::history,
     .words = "history",
     .option = {.word = "--json", .help = "as JSON"},
     .help = "list the earlier layouts, the newest first",
     .more =
         "The columns are: number, date, time, cause, and what differs from now. Tabs stand between them."},
    {.verb = Verb::log,
     .words = "log",
     .option = {.word = "-f", .help = "go on with each new line, until Ctrl-C"},
     .help = "print the log's newest lines"},
    {.verb = Verb::waitUntil,
     .words = "wait-until",
     .arguments = {Argument{"STATE", Kind::goal}},
     .option = {.word = "--timeout",
                .help = "give up after that many seconds, with status 1",
                .value = {"SECONDS", Kind::seconds}},
     .help = "wait until the bar is tidy, or the icons are out",
     .more = "Without --timeout it gives up after 60 seconds."},
    {.verb = Verb::completions,
     .words = "completions",
     .arguments = {Argument{"SHELL", Kind::shell}},
     .place = Place::caller,
     .help = "print the completions for a shell"},
    {.verb = Verb::help,
     .words = "help",
     .arguments = {Argument{"COMMAND", Kind::command, true}},
     .option = {.word = "--man", .help = "the manual page, in the language of man"},
     .place = Place::caller,
     .help = "explain the commands, or one of them"},
    {.verb = Verb::version, .words = "version", .place = Place::caller, .help = "print the version"},
});

constexpr std::array<std::string_view, 3> sectionWords{"bar", "tucked", "buried"};
constexpr std::array<std::string_view, 2> switchWords{"on", "off"};
constexpr std::array<std::string_view, 2> goalWords{"tidy", "revealed"};
constexpr std::array<std::string_view, 3> shellWords{"bash", "fish", "zsh"};

constexpr auto commandWords = [] {
    std::array<std::string_view, table.size()> words{};
    std::ranges::transform(table, words.begin(), &Row::words);
    return words;
}();

}  // namespace

std::span<const Row> rows() {
    return table;
}

const Row& rowOf(Verb verb) {
    return *std::ranges::find(table, verb, &Row::verb);
}

const Row* rowNamed(std::string_view words) {
    const auto* const found = std::ranges::find(table, words, &Row::words);
    return found == table.end() ? nullptr : found;
}

std::span<const std::string_view> wordsFor(Kind kind) {
    switch (kind) {
        case Kind::section: return sectionWords;
        case Kind::onOff: return switchWords;
        case Kind::goal: return goalWords;
        case Kind::shell: return shellWords;
        case Kind::command: return commandWords;
        case Kind::none:
        case Kind::app:
        case Kind::text:
        case Kind::file:
        case Kind::seconds:
        case Kind::number: break;
    }
    return {};
}

bool isCommandLine(std::string_view program, const std::vector<std::string>& arguments) {
    const auto slash = program.rfind('/');
    const auto name = slash == std::string_view::npos ? program : program.substr(slash + 1);
    return name == "velko" || std::ranges::any_of(table, [&](const Row& row) {
               // "layout" alone is meant as a command too, though an incomplete one.
               return !arguments.empty() && row.words.substr(0, row.words.find(' ')) == arguments.front();
           });
}

}  // namespace velko::commands
