#pragma once

#include <chrono>
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

/// The whole second that has begun at `date`, also before 1970.
[[nodiscard]] Date floorToSeconds(PreciseDate date) noexcept;

/// Reads ISO 8601 text such as "2026-03-01T09:30:00Z". Fractions of a second are dropped (towards the
/// past), offsets such as "+05:30" are applied. Nothing if the text is anything else, names a day or
/// time that does not exist, or leaves the years 0001 to 9999.
[[nodiscard]] std::optional<Date> parseDate(std::string_view text) noexcept;

/// Writes ISO 8601 text in UTC, as `parseDate` reads it. A date outside the years 0001 to 9999 is
/// written as the nearest one inside.
[[nodiscard]] std::string formatDate(Date date);

}  // namespace velko
