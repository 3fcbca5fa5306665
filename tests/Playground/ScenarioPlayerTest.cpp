#include <gtest/gtest.h>
#include <tuple>

#include "Playground/Terminal/ScenarioPlayer.h"
#include "tests/TemporaryFolder.h"

namespace velko::playground {
namespace {

TEST(ScenarioPlayer, SaysByItsStatusHowAScenarioEnded) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "my.scenario";
    const std::tuple<const char*, int, const char*> rows[] = {
        {"say \"Hello\"\nlaunch Slack\nexpect visible Slack", 0, ""},
        {"launch Slack\n\nexpect hidden Slack", 1, ":3: Slack shows.\n"},
        {"launch Slak", 2, ":1: No neighbour is called \"Slak\", and it is no bundle identifier.\n"},
    };
    for (const auto& [text, status, complaint] : rows) {
        writeFile(file, text);
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        EXPECT_EQ(playFile(file, std::nullopt, std::nullopt), status);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), status == 0 ? "" : file.string() + complaint);
        EXPECT_EQ(testing::internal::GetCapturedStdout().starts_with("\nHello\n"), status == 0);
    }
}

}  // namespace
}  // namespace velko::playground
