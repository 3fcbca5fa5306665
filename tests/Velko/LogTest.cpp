#include <algorithm>
#include <cstdint>
#include <deque>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
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

TEST(LineRingTest, KeepsWhatFitsInOrderWhateverTheLinesAreLike) {
    constexpr LineRing::Limits limits{.lines = 7, .bytes = 50};
    constexpr std::size_t usual = 16;
    LineRing ring(limits);
    std::deque<std::string> expected;
    std::mt19937 dice(1);
    std::size_t usualInARow = 0;
    for (std::uint64_t number = 1; number <= 5000; ++number) {
        // Now and then a line that needs the whole ring, or more than that.
        const std::size_t length = dice() % 40 == 0 ? limits.bytes + dice() % 2 : dice() % (usual + 1);
        usualInARow = length > usual ? 0 : usualInARow + 1;
        std::string line(length, static_cast<char>('a' + number % 26));
        ring.push(line);
        line.resize(std::min(length, limits.bytes));
        expected.push_back(line);
        const auto lines = ring.lines();
        ASSERT_LE(lines.size(), limits.lines);
        std::size_t kept = 0;
        for (const std::string_view each : lines) {
            kept += each.size();
        }
        // What is free is less than one line at the end of the memory, and one behind the newest line.
        ASSERT_TRUE(usualInARow < 2 * limits.lines || lines.size() == limits.lines ||
                    kept + 2 * usual >= limits.bytes);
        while (expected.size() > lines.size()) {
            expected.pop_front();
        }
        ASSERT_TRUE(std::ranges::equal(lines, expected)) << "after line " << number;
        ASSERT_EQ(ring.pushed(), number);
    }
}

TEST(LineRingTest, CutsALineThatIsTooLongBetweenTwoCharacters) {
    LineRing ring({.lines = 2, .bytes = 8});
    ring.push("1234567é");
    ring.push("12345€");
    EXPECT_EQ(ring.lines().size(), 1U);
    EXPECT_EQ(ring.lines().front(), "12345€");
    ring.push("123456€");
    EXPECT_EQ(ring.lines().front(), "123456");
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
