#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/Log.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class LogTest : public testing::Test {
 protected:
    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "Velko.log";
    SimulatedMainThread clock{
        PreciseDate(std::chrono::sys_days(std::chrono::year{2026} / 3 / 1) + 9h + 30min + 250ms)};
};

TEST_F(LogTest, AppendsDatedLinesAcrossRunsForItsUserOnly) {
    std::ofstream(file) << "an older run\n";
    ::chmod(file.c_str(), 0644);
    Log log(clock, file);
    log.log("engine", "applied");
    log.log("engine", "two\n");
    // The hour depends on the test machine's time zone; the form of the line does not.
    EXPECT_THAT(log.lines().front(), testing::MatchesRegex("20[0-9-]+ [0-9:]+:00.250  \\[engine\\] applied"));
    EXPECT_EQ(contentOf(file), "an older run\n" + log.text() + "\n");
    struct stat status{};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(LogTest, KeepsTheNewestTwoThousandLinesInMemory) {
    Log log(clock, file);
    for (int i = 0; i < 2500; ++i) {
        log.log("app", std::to_string(i));
    }
    EXPECT_EQ(log.lines().size(), 2000U);
    EXPECT_TRUE(log.lines().front().ends_with(" 500"));
    EXPECT_TRUE(log.text().ends_with(" 2499"));
    const std::string all = contentOf(file);
    EXPECT_EQ(std::ranges::count(all, '\n'), 2500);
}

TEST_F(LogTest, WritesThroughNoLinkOfAnotherUser) {
    const auto other = folder.path() / "other";
    std::ofstream(other) << "theirs\n";
    ::chmod(other.c_str(), 0644);
    std::filesystem::create_symlink("other", file);
    FileCalls calls;
    calls.lstat = [lstat = calls.lstat](const char* path, struct stat* found) {
        const int result = lstat(path, found);
        found->st_uid += S_ISLNK(found->st_mode) ? 1 : 0;
        return result;
    };
    Log log(clock, file, calls);
    log.log("app", "in memory");
    EXPECT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(contentOf(other), "theirs\n");
    EXPECT_EQ(std::filesystem::status(other).permissions(), std::filesystem::perms(0644));
    Log(clock, file).log("app", "through a link of one's own");
    EXPECT_TRUE(contentOf(other).ends_with("own\n"));
}

TEST_F(LogTest, GoesOnInMemoryWithoutAFolder) {
    Log log(clock, folder.path() / "missing" / "Velko.log");
    log.log("app", "first");
    std::filesystem::create_directory(folder.path() / "missing");
    log.log("app", "second");
    EXPECT_EQ(log.lines().size(), 2U);
    EXPECT_FALSE(std::filesystem::exists(log.file())) << "the first line decides for the whole run";
}

}  // namespace
}  // namespace velko
