#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "VelkoCore/Time/Date.h"

// Runs once per zone, as a test of its own with TZ set for the process.

namespace velko {
namespace {

using namespace std::chrono_literals;

Date at(const std::string& text) {
    const auto date = parseDate(text);
    EXPECT_TRUE(date) << text;
    return date.value_or(Date{});
}

struct Zone {
    std::string name;
    std::vector<std::pair<std::string, std::string>> starts;  ///< moments, and when their days began
    std::vector<std::tuple<std::string, std::int64_t, std::string>> sums;  ///< a date, days, and their sum
};

const std::vector<Zone> zones{
    {"Africa/Cairo",  // 26 April 2024 begins at 1:00; 31 October 2024 has 23:00 to 24:00 twice
     {{"2024-04-26T12:00:00+03:00", "2024-04-26T01:00:00+03:00"},
      {"2024-04-25T23:59:59+02:00", "2024-04-25T00:00:00+02:00"},
      {"2024-10-31T23:30:00+02:00", "2024-10-31T00:00:00+03:00"},
      {"2024-11-01T00:00:00+02:00", "2024-11-01T00:00:00+02:00"}},
     {{"2024-04-25T00:30:00+02:00", 1, "2024-04-26T01:30:00+03:00"}}},
    {"America/Havana",  // 3 November 2024 has 0:00 to 1:00 twice; 10 March 2024 begins at 1:00
     {{"2024-11-03T00:30:00-05:00", "2024-11-03T00:00:00-04:00"},
      {"2024-11-03T00:30:00-04:00", "2024-11-03T00:00:00-04:00"},
      {"2024-03-10T09:00:00-04:00", "2024-03-10T01:00:00-04:00"}},
     {{"2024-11-02T00:30:00-04:00", 1, "2024-11-03T00:30:00-04:00"},
      {"2024-11-02T00:30:00-04:00", 2, "2024-11-04T00:30:00-05:00"}}},
    {"America/Los_Angeles",
     {{"2024-03-10T12:00:00-07:00", "2024-03-10T00:00:00-08:00"},
      {"9999-12-31T15:59:59-08:00", "9999-12-31T00:00:00-08:00"}},
     {{"2024-03-09T02:30:00-08:00", 1, "2024-03-10T03:30:00-07:00"},
      {"2024-11-04T01:30:00-08:00", -1, "2024-11-03T01:30:00-07:00"},
      {"2026-03-01T09:00:00-08:00", 30, "2026-03-31T09:00:00-07:00"},
      {"2026-03-01T09:00:00-08:00", INT64_MAX, "9999-12-31T23:59:59Z"},
      {"2026-03-01T09:00:00-08:00", INT64_MIN, "0001-01-01T00:00:00Z"}}},
    {"America/Santiago",  // 8 September 2024 begins at 1:00; 6 April 2024 has 23:00 to 24:00 twice
     {{"2024-09-08T12:00:00-03:00", "2024-09-08T01:00:00-03:00"},
      {"2024-04-06T23:30:00-04:00", "2024-04-06T00:00:00-03:00"},
      {"2024-04-07T00:00:00-04:00", "2024-04-07T00:00:00-04:00"}},
     {{"2024-09-07T00:15:00-04:00", 1, "2024-09-08T01:15:00-03:00"}}},
    {"America/St_Johns",  // on 7 November 2010 the clocks went from 0:01 back to 23:01 of the day before
     {{"2010-11-07T00:00:30-02:30", "2010-11-07T00:00:00-02:30"},
      {"2010-11-06T23:30:00-03:30", "2010-11-06T00:00:00-02:30"},
      {"2010-11-07T08:00:00-03:30", "2010-11-07T00:00:00-02:30"}},
     {}},
    {"America/Toronto",  // on 30 March 1919 the clocks leapt from 23:30 into the next day
     {{"1919-03-31T12:00:00-04:00", "1919-03-31T00:30:00-04:00"},
      {"1919-03-30T23:29:59-05:00", "1919-03-30T00:00:00-05:00"}},
     {}},
    {"Asia/Beirut",
     {{"2024-03-31T12:00:00+03:00", "2024-03-31T01:00:00+03:00"},
      {"2024-10-26T23:30:00+02:00", "2024-10-26T00:00:00+03:00"}},
     {}},
    {"Asia/Kolkata", {{"2026-03-01T00:00:00+05:30", "2026-03-01T00:00:00+05:30"}}, {}},
    {"Europe/Berlin",
     {{"2024-03-31T12:00:00+02:00", "2024-03-31T00:00:00+01:00"},
      {"2024-10-27T02:30:00+01:00", "2024-10-27T00:00:00+02:00"}},
     {{"2024-03-30T02:30:00+01:00", 1, "2024-03-31T03:30:00+02:00"}}},
    {"Pacific/Apia",  // had no 30 December 2011
     {{"2011-12-31T00:00:01+14:00", "2011-12-31T00:00:00+14:00"},
      {"2011-12-29T23:59:59-10:00", "2011-12-29T00:00:00-10:00"}},
     {{"2011-12-29T10:00:00-10:00", 1, "2011-12-31T10:00:00+14:00"},
      {"2011-12-29T10:00:00-10:00", 2, "2011-12-31T10:00:00+14:00"}}},
    {"UTC",
     {{"1969-12-31T23:59:59Z", "1969-12-31T00:00:00Z"}, {"0001-01-01T00:00:00Z", "0001-01-01T00:00:00Z"}},
     {{"2024-02-28T12:00:00Z", 2, "2024-03-01T12:00:00Z"}}},
};

/// The zone that this process runs in. An unknown zone fails the tests, as does a set of zone rules that
/// the machine lacks: the C library would take it for UTC, and the table would not hold.
class CalendarTest : public testing::Test {
 protected:
    void SetUp() override {
        const char* name = std::getenv("TZ");  // NOLINT(concurrency-mt-unsafe)
        ASSERT_NE(name, nullptr) << "TZ must be set for this program";
        const auto found = std::ranges::find(zones, name, &Zone::name);
        ASSERT_NE(found, zones.end()) << name;
        zone_ = &*found;
    }

    const Zone* zone_ = nullptr;
    Calendar calendar_;
};

TEST_F(CalendarTest, BeginsADayAtItsFirstInstant) {
    for (const auto& [moment, start] : zone_->starts) {
        EXPECT_EQ(formatDate(calendar_.startOfDay(at(moment))), formatDate(at(start))) << moment;
        EXPECT_EQ(calendar_.dayDifference(at(start), at(moment)), 0) << moment;
        EXPECT_LT(calendar_.dayDifference(at(moment), at(start) - 1s), 0) << moment;
    }
}

TEST_F(CalendarTest, AddsDaysByTheWallClock) {
    for (const auto& [date, days, sum] : zone_->sums) {
        EXPECT_EQ(formatDate(calendar_.addingDays(days, at(date))), formatDate(at(sum)))
            << date << " + " << days;
    }
}

TEST_F(CalendarTest, AgreesWithTheWallClockAtRandomMoments) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random{seed};
    const auto dayOnWall = [](Date date) {
        const std::time_t time = date.time_since_epoch().count();
        std::tm parts{};
        localtime_r(&time, &parts);
        return parts.tm_year * 366 + parts.tm_yday;
    };
    std::uniform_int_distribution<std::int64_t> moments{
        0, at("2037-12-31T00:00:00Z").time_since_epoch().count()};
    for (int round = 0; round < 5000; ++round) {
        const Date date{std::chrono::seconds{moments(random)}};
        const Date start = calendar_.startOfDay(date);
        SCOPED_TRACE(formatDate(date));
        ASSERT_LE(start, date);
        ASSERT_EQ(dayOnWall(start), dayOnWall(date));
        ASSERT_LT(dayOnWall(start - 1s), dayOnWall(date));
        ASSERT_EQ(calendar_.startOfDay(start), start);
        const std::int64_t days = moments(random) % 4000 - 2000;
        const Date later = calendar_.addingDays(days, date);
        const std::int64_t difference = calendar_.dayDifference(date, later).value_or(INT64_MIN);
        ASSERT_GE(difference, days) << formatDate(later);
        ASSERT_LE(difference, zone_->name == "Pacific/Apia" ? days + 1 : days) << formatDate(later);
        ASSERT_EQ(calendar_.daysBetween(date, later), std::max<std::int64_t>(difference, 0));
    }
}

}  // namespace
}  // namespace velko
