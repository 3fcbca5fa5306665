#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Watching/LiveActivityDetector.h"

namespace velko {
namespace {

constexpr std::uint64_t ms = 1'000'000;

Uptime uptime(double seconds) {
    return std::chrono::round<Uptime>(std::chrono::duration<double>(seconds));
}

/// A reading, with its moments in seconds.
struct RendererRow {
    std::optional<ProcessID> pid;
    std::uint64_t cpu = 0;
    double at = 0;
    std::optional<double> ownChange = {};
};

/// The verdict after each reading: a plus while a Live Activity counts as showing.
std::string verdicts(const std::vector<RendererRow>& rows) {
    LiveActivityDetector detector;
    std::string text;
    for (const RendererRow& row : rows) {
        const LiveActivityDetector::Reading reading{.pid = row.pid,
                                                    .cpuNanoseconds = row.cpu,
                                                    .at = uptime(row.at),
                                                    .lastOwnChange = row.ownChange.transform(uptime)};
        text += detector.record(reading) ? '+' : '-';
        EXPECT_EQ(detector.isShowing(reading.at), text.back() == '+') << "without a reading";
    }
    return text;
}

TEST(LiveActivityDetector, ShowsFromEnoughWorkInTheWindowUntilThreeMinutesOfQuietOrTheEnd) {
    EXPECT_EQ(verdicts({{7, 90 * ms, 0}, {7, 94 * ms, 5}, {7, 110 * ms - 1, 35}, {7, 113 * ms, 36}}), "----");
    EXPECT_EQ(verdicts({{7, 90 * ms, 0}, {7, 94 * ms, 5}, {7, 110 * ms, 35}, {7, 110 * ms, 36}}), "--++");
    EXPECT_EQ(verdicts({{7, 0, 0}, {7, 20 * ms, 5}, {7, 20 * ms, 35}, {7, 20 * ms, 214.9}}), "-+++");
    EXPECT_EQ(verdicts({{7, 0, 0}, {7, 20 * ms, 5}, {7, 20 * ms, 35}, {7, 20 * ms, 215}}), "-++-");
    // A renderer that restarts does not cut the verdict short; one that is gone does.
    EXPECT_EQ(verdicts({{7, 0, 0}, {7, 40 * ms, 5}, {8, 90 * ms, 9}, {8, 90 * ms, 10}, {8, 90 * ms, 186}}),
              "-+++-");
    EXPECT_EQ(verdicts({{7, 0, 0}, {7, 40 * ms, 5}, {{}, 0, 9}, {7, 90 * ms, 10}, {7, 99 * ms, 15}}),
              "-+---");
}

TEST(LiveActivityDetector, DropsTheWorkOfItsOwnChangesAndOfWildCounters) {
    EXPECT_EQ(verdicts({{7, 0, 0}, {7, 25 * ms, 5, 1.1}, {7, 45 * ms - 1, 9, 5}, {7, 45 * ms, 15}}), "---+");
    EXPECT_EQ(verdicts({{7, 50 * ms, 0}, {7, ms, 5}, {7, 21 * ms - 1, 10}, {7, 21 * ms, 15}}), "---+");
    // A sum of this work would wrap around to almost nothing.
    EXPECT_EQ(verdicts({{7, 0, 0}, {7, UINT64_MAX, 1}, {7, 0, 2}, {7, 5, 3}, {7, 5, 182.9}}), "-++++");
}

}  // namespace
}  // namespace velko
