#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "VelkoCore/Habits/AppUsage.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

constexpr std::uint64_t mebibyte = 1'048'576;

TEST(AppUsage, RoundsItsFiguresForPeopleAndIsHeavyAtEitherLimit) {
    const std::string heavy = "Uses a lot for a menu bar app. You can quit it from the ••• menu.";
    const std::string usual = "Memory and CPU this app uses in the background";
    const std::vector<std::tuple<AppUsage, std::string, std::string>> cases{
        {{mebibyte / 2 - 1, {}}, "0 MB", usual},
        {{2 * mebibyte + mebibyte / 2, 1.99}, "3 MB · 2.0% CPU", usual},
        {{399 * mebibyte, 2.0}, "399 MB · 2.0% CPU", heavy},
        {{400 * mebibyte - 1, 0.099}, "400 MB · 0% CPU", usual},
        {{400 * mebibyte, 0.1}, "400 MB · 0.1% CPU", heavy},
        {{1'073'741'823, 9.96}, "1024 MB · 10.0% CPU", heavy},
        {{1'073'741'824, 10.4}, "1.0 GB · 10% CPU", heavy},
        {{UINT64_MAX, 250.5}, "17179869184.0 GB · 251% CPU", heavy},
    };
    for (const auto& [usage, text, help] : cases) {
        EXPECT_EQ(describe(usage), text);
        EXPECT_EQ(AppHealth::usageHelp(usage), help) << text;
    }
}

TEST(UsageTracker, SmoothsTheCPUUseOfOneProcessAndStartsAnewWithAnother) {
    // Seconds, process, its CPU time in milliseconds, the use in percent
    const std::vector<std::tuple<int, ProcessID, std::uint64_t, std::optional<double>>> rounds{
        {100, 1, 0, {}},       // the first sample
        {110, 1, 500, 5.0},    // the first measurement counts in full
        {120, 1, 1'500, 6.0},  // 0.2 of 10 and 0.8 of 5
        {140, 2, 2'500, {}},   // relaunched
        {150, 2, 3'500, 10.0},
        {160, 2, 3'400, {}},  // the counter went back
        {170, 2, 3'400, 0.0},
        {170, 2, 3'500, {}},  // no time passed
        {180, 2, 18'446'744'073'709, 184'467'440'702.09},
    };
    UsageTracker tracker;
    for (const auto& [at, pid, milliseconds, percent] : rounds) {
        tracker.record({.samples = {{"a", {pid, {milliseconds * 1'000'000, milliseconds}}}},
                        .at = std::chrono::seconds(at)});
        const auto& [memory, cpu] = tracker.usage().at("a");
        EXPECT_EQ(memory, milliseconds);
        EXPECT_DOUBLE_EQ(cpu.value_or(-1), percent.value_or(-1)) << milliseconds;
    }
    tracker.record({.samples = {{"b", {}}}, .at = 200s});  // An app that is left out is forgotten.
    tracker.record({.samples = {{"a", {2, {UINT64_MAX, 0}}}}, .at = 210s});
    EXPECT_EQ(tracker.usage(), (std::map<BundleID, AppUsage>{{"a", {}}}));
}

}  // namespace
}  // namespace velko
