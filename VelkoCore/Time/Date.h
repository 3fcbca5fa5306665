#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velko {

/// A moment as layouts store it: whole seconds, UTC, years 0001 to 9999.
using Date = std::chrono::sys_seconds;

inline constexpr Date earliestDate = std::chrono::sys_days{std::chrono::year{1} / 1 / 1};
inline constexpr Date latestDate =
    std::chrono::sys_days{std::chrono::year{9999} / 12 / 31} + std::chrono::seconds{86'399};

/// A moment as the wall clock gives it.
using PreciseDate = std::chrono::sys_time<std::chrono::milliseconds>;

/// Time since the machine started, by a clock that never goes back and stands still while the machine sleeps.
using Uptime = std::chrono::nanoseconds;

/// The whole second that has begun at `date`, also before 1970.
[[nodiscard]] Date floorToSeconds(PreciseDate date) noexcept;

/// Reads ISO 8601 text such as "2026-03-01T09:30:00Z". Fractions of a second are dropped (towards the
/// past), offsets such as "+05:30" are applied. Nothing if the text is anything else, names a day or
/// time that does not exist, or leaves the years 0001 to 9999.
[[nodiscard]] std::optional<Date> parseDate(std::string_view text) noexcept;

/// Writes ISO 8601 text in UTC, as `parseDate` reads it. A date outside the years 0001 to 9999 is
/// written as the nearest one inside.
[[nodiscard]] std::string formatDate(Date date);

/// Days as the user counts them, in the process's time zone and by the C library's rules for it.
///
/// A value without state of its own: the zone belongs to the process. It is read when the first
/// calendar is used and again by `rereadZone`. Main thread only, as the C library's zone is shared.
class Calendar {
 public:
    /// Reads the system's time zone again, after the environment has changed.
    static void rereadZone() noexcept;

    /// What the clock on the wall shows at `date`; UTC when the C library cannot say.
    [[nodiscard]] std::chrono::local_seconds localTime(Date date) const noexcept;

    /// The first instant of the local day that holds `date`, also on days that have no midnight.
    [[nodiscard]] Date startOfDay(Date date) const noexcept;

    /// Local days from the day of `from` to the day of `to`: negative when `to` is on an earlier day;
    /// nothing when the C library cannot place one of the two.
    [[nodiscard]] std::optional<std::int64_t> dayDifference(Date from, Date to) const noexcept;

    /// `dayDifference`, where a missing or negative count is 0.
    [[nodiscard]] std::int64_t daysBetween(Date from, Date to) const noexcept;

    /// The same local time of day, `days` days later. A time that does not exist on that day moves
    /// forward by the gap. Stays within the years 0001 to 9999.
    [[nodiscard]] Date addingDays(std::int64_t days, Date to) const noexcept;
};

}  // namespace velko
