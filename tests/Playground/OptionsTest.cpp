#include <gtest/gtest.h>

#include "Playground/Options.h"

namespace velko::playground {
namespace {

using Command = Options::Command;

TEST(Options, NameOneThingToDoAndTheLayoutToDoItWith) {
    EXPECT_EQ(parseOptions({}), Options{});
    EXPECT_EQ(parseOptions({"--layout", "mine.json"}), (Options{.layout = "mine.json"}));
    EXPECT_EQ(parseOptions({"--sort", "--layout", "mine.json"}),
              (Options{.command = Command::sort, .layout = "mine.json"}));
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
        {{"--sort", "--export", "a"}, "Only one thing at a time: --export is one too many."},
    };
    for (const auto& [arguments, message] : rows) {
        const auto options = parseOptions(arguments);
        ASSERT_FALSE(options) << message;
        EXPECT_EQ(options.error(), message);
    }
}

}  // namespace
}  // namespace velko::playground
