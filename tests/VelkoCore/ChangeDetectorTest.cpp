#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <tuple>
#include <vector>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Watching/ChangeDetector.h"
#include "VelkoCore/Watching/PopOutLimit.h"

namespace velko {
namespace {

Uptime momentAt(double seconds) {
    return std::chrono::round<Uptime>(std::chrono::duration<double>(seconds));
}

TEST(ChangeDetector, PopsWhatChangesOnceInFiveMinutes) {
    const std::vector<BundleID> none;
    const std::vector<BundleID> both{"B", "a"};
    using Row = std::tuple<double, std::int32_t, std::vector<ItemReading>, std::vector<BundleID>>;
    const std::vector<Row> rows{
        {10, 1, {{"12:00", 40}}, none},             // the first look
        {12, 1, {{"12:00", 42.9}}, none},           // hardly wider
        {14, 1, {{"12:00", 45}}, none},             // compared with the look before, not with the first
        {16, 1, {{"12:00", 42}}, both},             // narrower counts like wider
        {315.9, 1, {{"12:01", 42}}, none},          // within the cool-down
        {316, 1, {{"12:02", 42}}, both},            // a text alone
        {318, 1, {{"12:03", 42}}, none},            // within the next cool-down
        {700, 1, {{"12:03", 42}}, none},            // what changed then is let go
        {702, 1, {{"12:03", 42}, {"3", 9}}, none},  // a second item
        {704, 2, {{"12:04", 42}, {"4", 9}}, none},  // relaunched
        {706, 2, {{"12:04", 42}, {"5", 9}}, both},
    };
    ChangeDetector detector;
    for (const auto& [at, pid, items, popped] : rows) {
        EXPECT_EQ(detector.check({{{"a", {pid, items}}, {"B", {pid, items}}}, momentAt(at)}), popped) << at;
    }
    EXPECT_EQ(detector.check({{}, momentAt(1'100)}),
              none);  // An app that is left out comes back as a new one.
    EXPECT_EQ(detector.check({{{"a", {2, {{"1", 9}, {"1", 9}}}}}, momentAt(1'102)}), none);
}

TEST(PopOutLimit, IsReachedByTwelveTimesInAnHourWithoutAClick) {
    PopOutLimit limit;
    const auto popAt = [&](double first, double step, int times) {
        bool isTooOften = false;
        for (int time = 0; time < times; ++time) {
            isTooOften = limit.isTooOften("a", momentAt(first + time * step)) || isTooOften;
        }
        return isTooOften;
    };
    EXPECT_FALSE(popAt(0, 328, 20)) << "eleven times an hour";
    limit.clicked("a");
    EXPECT_FALSE(popAt(10'000, 300, 11));
    EXPECT_TRUE(popAt(13'300, 300, 1));
    EXPECT_FALSE(popAt(13'600, 300, 11)) << "the count begins anew";
    limit.clicked("a");
    EXPECT_FALSE(popAt(17'000, 300, 11));
}

TEST(Layout, KeepsAQuietAppInUntilTheNextDay) {
    const Date noon = Date(std::chrono::sys_days(std::chrono::year(2026) / 3 / 1)) + std::chrono::hours(12);
    Layout layout;
    layout.quieten("old", noon - std::chrono::days(2), {});
    layout.quieten("a", noon, {});
    EXPECT_FALSE(layout.quietUntil.contains("old")) << "it is over";
    EXPECT_FALSE(layout.mayPopOut("a", noon + std::chrono::seconds(1)));
    EXPECT_TRUE(layout.mayPopOut("b", noon));
    const Date tomorrow = Calendar().addingDays(1, Calendar().startOfDay(noon));
    EXPECT_FALSE(layout.mayPopOut("a", tomorrow - std::chrono::seconds(1)));
    EXPECT_TRUE(layout.mayPopOut("a", tomorrow));
    layout.setPopsOut("a", true);
    EXPECT_TRUE(layout.mayPopOut("a", noon)) << "the user wants to see it all the same";
    layout.quietUntil = {{"a", noon + std::chrono::days(300)}};
    EXPECT_TRUE(layout.setBackDates(noon, {}));
    EXPECT_EQ(layout.quietUntil.at("a"), tomorrow) << "the clock was ahead";
    layout.popOutOnChange = false;
    EXPECT_FALSE(layout.mayPopOut("b", noon));
}

}  // namespace
}  // namespace velko
