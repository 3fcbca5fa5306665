#pragma once

#include <cstdint>
#include <optional>

#include "VelkoCore/Time/Date.h"

namespace velko {

/// Days as the user counts them, in the process's time zone and by the C library's rules for it.
///
/// A value without state of its own: the zone belongs to the process. It is read when the first
/// calendar is used and again by `rereadZone`. Main thread only, as the C library's zone is shared.
class Calendar {
 public:
    /// Reads the system's time zone again, after the environment has changed.
    static void rereadZone() noexcept;

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
