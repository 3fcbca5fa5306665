#include <gtest/gtest.h>

#include "Playground/Terminal/Options.h"
#include "VelkoEngine/Text/Text.h"

namespace velko::playground {
namespace {

using Command = Options::Command;

TEST(Options, NameOneThingToDoAndTheLayoutToDoItWith) {
    EXPECT_EQ(parseOptions({}), Options{});
    EXPECT_EQ(parseOptions({"--port", "8080", "--no-open", "--home", "kept"}),
              (Options{.home = "kept", .port = 8080, .mayOpen = false}));
    EXPECT_EQ(parseOptions({"--layout", "mine.json"}),
              (Options{.command = Command::playWeek, .layout = "mine.json"}));
    EXPECT_EQ(parseOptions({"--sort", "--layout", "mine.json"}),
              (Options{.command = Command::sort, .layout = "mine.json"}));
    EXPECT_EQ(parseOptions({"--terminal", "--speed", "60"}),
              (Options{.command = Command::playWeek, .speed = 60}));
    EXPECT_EQ(parseOptions({"--script", "my.scenario"}),
              (Options{.command = Command::playScript, .path = "my.scenario"}));
    EXPECT_EQ(parseOptions({"--import-from", "/home/me"}),
              (Options{.command = Command::importFrom, .path = "/home/me"}));
}

TEST(Options, RefuseWhatTheyDoNotUnderstandInOneLine) {
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"--tidy"}, "Unknown argument \"--tidy\"; try --help."},
        {{"layout.json"}, "Unknown argument \"layout.json\"; try --help."},
        {{"--layout"}, "--layout needs a file."},
        {{"--layout", ""}, "--layout needs a file."},
        {{"--layout", "a", "--layout", "b"}, "--layout is given twice."},
        {{"--export"}, "--export needs a file."},
        {{"--import-from"}, "--import-from needs a home folder."},
        {{"--script"}, "--script needs a file."},
        {{"--speed", "0"}, "--speed is a whole number from 1 to 1000000000."},
        {{"--sort", "--speed", "2"}, "--speed is for what is played."},
        {{"--port", "65536"}, "--port is a whole number from 1 to 65535."},
        {{"--port", "80x"}, "--port is a whole number from 1 to 65535."},
        {{"--home"}, "--home needs a folder."},
        {{"--home", "a", "--home", "b"}, "--home is given twice."},
        {{"--terminal", "--port", "80"}, "--port and --no-open are for the page."},
        {{"--sort", "--no-open"}, "--port and --no-open are for the page."},
        {{"--terminal", "--sort"}, "Only one thing at a time: --sort is one too many."},
        {{"--sort", "--export", "a"}, "Only one thing at a time: --export is one too many."},
    };
    for (const auto& [arguments, message] : rows) {
        const auto options = parseOptions(arguments);
        ASSERT_FALSE(options) << message;
        EXPECT_EQ(options.error(), message);
    }
}

TEST(Printable, ReplacesWhatWouldControlTheTerminal) {
    EXPECT_EQ(printable("Caf\u00E9 \u00A0\u2026"), "Caf\u00E9 \u00A0\u2026");
    for (const auto* control : {"\x01", "\n", "\x1B", "\x7F", "\u0080", "\u009F", "\x9B", "\xC2"}) {
        EXPECT_EQ(printable(control + std::string("m")), "\uFFFDm") << control;
    }
}

}  // namespace
}  // namespace velko::playground
