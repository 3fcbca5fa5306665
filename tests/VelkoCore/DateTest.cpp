#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "VelkoCore/Time/Date.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

TEST(Date, IsReadWithFractionsAndOffsets) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"2026-03-01T09:30:00Z", "2026-03-01T09:30:00Z"},
        {"2026-03-01T09:30:59.999999999Z", "2026-03-01T09:30:59Z"},
        {"1969-12-31T23:59:59.5Z", "1969-12-31T23:59:59Z"},
        {"2026-03-01T00:10:00+05:30", "2026-02-28T18:40:00Z"},
        {"2024-02-29T23:59:59-00:01", "2024-03-01T00:00:59Z"},
        {"0001-01-01T00:00:00Z", "0001-01-01T00:00:00Z"},
        {"9999-12-31T23:59:59Z", "9999-12-31T23:59:59Z"},
    };
    for (const auto& [text, inUtc] : cases) {
        EXPECT_EQ(formatDate(parseDate(text).value_or(Date{})), inUtc) << text;
    }
    EXPECT_EQ(parseDate("1970-01-02T00:00:01Z"), Date{86'401s});
}

TEST(Date, IsNotReadFromAnyOtherText) {
    const std::vector<std::string> others{"2026-03-01",
                                          "2026-03-01T09:30Z",
                                          "2026-03-01T09:30:00",
                                          "2026-03-01 09:30:00Z",
                                          "2026-03-01T09:30:00.Z",
                                          "2026-03-01T09:30:00Z ",
                                          "2026-02-29T00:00:00Z",
                                          "2026-13-01T00:00:00Z",
                                          "2026-03-01T24:00:00Z",
                                          "2026-03-01T23:59:60Z",
                                          "2026-03-01T09:30:00+0530",
                                          "2026-03-01T09:30:00+24:00",
                                          "+026-03-01T09:30:00Z",
                                          "0000-12-31T23:59:59Z",
                                          "0001-01-01T00:00:00+00:01",
                                          "9999-12-31T23:59:59-00:01",
                                          "12026-03-01T09:30:00Z"};
    for (const std::string& text : others) {
        EXPECT_FALSE(parseDate(text)) << text;
    }
}

TEST(Date, StaysWithinTheYearsThatCanBeWritten) {
    EXPECT_EQ(formatDate(earliestDate - 1s), "0001-01-01T00:00:00Z");
    EXPECT_EQ(formatDate(Date::max()), "9999-12-31T23:59:59Z");
}

TEST(Date, FloorsMillisecondsTowardsThePast) {
    EXPECT_EQ(floorToSeconds(PreciseDate{1'999ms}), Date{1s});
    EXPECT_EQ(floorToSeconds(PreciseDate{-1ms}), Date{-1s});
}

}  // namespace
}  // namespace velko
