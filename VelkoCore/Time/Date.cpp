#include "VelkoCore/Time/Date.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>

namespace velko {

namespace {

using namespace std::chrono;

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Reads a text part by part. After the first part that does not fit, all later parts fail too.
class Scanner {
 public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    /// A number of exactly `digits` digits.
    int number(std::size_t digits) {
        if (rest_.size() < digits || !std::ranges::all_of(rest_.substr(0, digits), isDigit)) {
            failed_ = true;
            return 0;
        }
        int value = 0;
        for (const char digit : rest_.substr(0, digits)) {
            value = value * 10 + (digit - '0');
        }
        rest_.remove_prefix(digits);
        return value;
    }

    bool take(char character) {
        if (!rest_.starts_with(character)) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    void expect(char character) { failed_ = !take(character) || failed_; }

    /// Skips one or more digits.
    void skipDigits() {
        static_cast<void>(number(1));
        while (!rest_.empty() && isDigit(rest_.front())) {
            rest_.remove_prefix(1);
        }
    }

    [[nodiscard]] bool hasSucceeded() const { return !failed_ && rest_.empty(); }

 private:
    std::string_view rest_;
    bool failed_ = false;
};

/// The time since midnight; nothing if there is no such time of day.
std::optional<seconds> timeOfDay(int hour, int minute, int second) {
    if (hour > 23 || minute > 59 || second > 59) {
        return std::nullopt;
    }
    return hours{hour} + minutes{minute} + seconds{second};
}

std::optional<seconds> scanOffset(Scanner& scanner) {
    if (scanner.take('Z')) {
        return seconds{0};
    }
    const bool isEast = scanner.take('+');
    if (!isEast) {
        scanner.expect('-');
    }
    const int hour = scanner.number(2);
    scanner.expect(':');
    const int minute = scanner.number(2);
    const auto offset = timeOfDay(hour, minute, 0);
    return offset && !isEast ? -*offset : offset;
}

void append(std::string& text, unsigned value, std::size_t digits, char separator) {
    const std::string number = std::to_string(value);
    text.append(digits - std::min(digits, number.size()), '0') += number;
    text += separator;
}

}  // namespace

Date floorToSeconds(PreciseDate date) noexcept {
    return floor<seconds>(date);
}

std::optional<Date> parseDate(std::string_view text) noexcept {
    Scanner scanner{text};
    const year theYear{scanner.number(4)};
    scanner.expect('-');
    const month theMonth{static_cast<unsigned>(scanner.number(2))};
    scanner.expect('-');
    const day theDay{static_cast<unsigned>(scanner.number(2))};
    scanner.expect('T');
    const int hour = scanner.number(2);
    scanner.expect(':');
    const int minute = scanner.number(2);
    scanner.expect(':');
    const int second = scanner.number(2);
    if (scanner.take('.')) {
        scanner.skipDigits();
    }
    const auto offset = scanOffset(scanner);
    const auto time = timeOfDay(hour, minute, second);
    const year_month_day date{theYear, theMonth, theDay};
    if (!scanner.hasSucceeded() || !offset || !time || !date.ok()) {
        return std::nullopt;
    }
    const Date result = sys_days{date} + *time - *offset;
    return result < earliestDate || result > latestDate ? std::nullopt : std::optional{result};
}

std::string formatDate(Date date) {
    const Date within = std::clamp(date, earliestDate, latestDate);
    const sys_days today = floor<days>(within);
    const year_month_day calendarDay{today};
    const hh_mm_ss time{within - today};
    std::string text;
    text.reserve(std::size("2026-01-01T00:00:00Z"));
    append(text, static_cast<unsigned>(static_cast<int>(calendarDay.year())), 4, '-');
    append(text, static_cast<unsigned>(calendarDay.month()), 2, '-');
    append(text, static_cast<unsigned>(calendarDay.day()), 2, 'T');
    append(text, static_cast<unsigned>(time.hours().count()), 2, ':');
    append(text, static_cast<unsigned>(time.minutes().count()), 2, ':');
    append(text, static_cast<unsigned>(time.seconds().count()), 2, 'Z');
    return text;
}

namespace {

using std::chrono::days;
using std::chrono::local_days;
using std::chrono::local_seconds;
using std::chrono::seconds;

constexpr seconds oneDay{86'400};

/// What the clock on the wall shows at a moment; nothing when the C library cannot say.
std::optional<local_seconds> wallClock(Date date) noexcept {
    const std::time_t time = date.time_since_epoch().count();
    std::tm parts{};
    if (localtime_r(&time, &parts) == nullptr) {
        return std::nullopt;
    }
    const std::chrono::year_month_day day{std::chrono::year{parts.tm_year + 1900},
                                          std::chrono::month{static_cast<unsigned>(parts.tm_mon + 1)},
                                          std::chrono::day{static_cast<unsigned>(parts.tm_mday)}};
    return local_days{day} + std::chrono::hours{parts.tm_hour} + std::chrono::minutes{parts.tm_min} +
           seconds{parts.tm_sec};
}

Date minus(local_seconds wall, seconds offset) noexcept {
    return Date{wall.time_since_epoch() - offset};
}

/// How far the zone is ahead of UTC before and after any change of its clocks near `wall`.
struct Offsets {
    seconds before;
    seconds after;
};

std::optional<Offsets> offsetsAround(local_seconds wall) noexcept {
    const auto offsetAt = [](Date date) -> std::optional<seconds> {
        const auto shown = wallClock(date);
        return shown ? std::optional{shown->time_since_epoch() - date.time_since_epoch()} : std::nullopt;
    };
    // A zone is never more than a day away from UTC, and never changes twice within these few days.
    const auto before = offsetAt(minus(wall, 2 * oneDay));
    const auto after = offsetAt(minus(wall, -2 * oneDay));
    return before && after ? std::optional{Offsets{*before, *after}} : std::nullopt;
}

/// The first moment at which the wall clock shows `wall`; nothing if the clocks leap over it.
std::optional<Date> firstShowing(local_seconds wall, const Offsets& offsets) noexcept {
    const std::array candidates{minus(wall, offsets.before), minus(wall, offsets.after)};
    const auto* const found =
        std::ranges::find_if(candidates, [&](Date date) { return wallClock(date) == wall; });
    return found == candidates.end() ? std::nullopt : std::optional{*found};
}

/// The moment at which the clocks leap over `wall`.
Date leapOver(local_seconds wall, const Offsets& offsets) noexcept {
    Date before = minus(wall, offsets.after) - seconds{1};
    Date after = minus(wall, offsets.before);
    while (after - before > seconds{1}) {
        const Date middle = before + (after - before) / 2;
        (wallClock(middle) < wall ? before : after) = middle;
    }
    return after;
}

Date withinRange(Date date) noexcept {
    return std::clamp(date, earliestDate, latestDate);
}

}  // namespace

void Calendar::rereadZone() noexcept {
    tzset();
}

local_seconds Calendar::localTime(Date date) const noexcept {
    return wallClock(date).value_or(local_seconds{date.time_since_epoch()});
}

Date Calendar::startOfDay(Date date) const noexcept {
    const auto shown = wallClock(date);
    if (!shown) {
        return date;
    }
    const local_seconds midnight = std::chrono::floor<days>(*shown);
    const auto offsets = offsetsAround(midnight);
    if (!offsets) {
        return date;
    }
    const auto first = firstShowing(midnight, *offsets);
    return withinRange(first ? *first : leapOver(midnight, *offsets));
}

std::optional<std::int64_t> Calendar::dayDifference(Date from, Date to) const noexcept {
    const auto first = wallClock(from);
    const auto last = wallClock(to);
    if (!first || !last) {
        return std::nullopt;
    }
    return (std::chrono::floor<days>(*last) - std::chrono::floor<days>(*first)).count();
}

std::int64_t Calendar::daysBetween(Date from, Date to) const noexcept {
    return std::max<std::int64_t>(dayDifference(from, to).value_or(0), 0);
}

Date Calendar::addingDays(std::int64_t count, Date to) const noexcept {
    constexpr std::int64_t most = (latestDate - earliestDate) / days{1} + 1;
    const auto shown = wallClock(to);
    if (!shown) {
        return to;
    }
    const local_seconds wanted = *shown + days{std::clamp(count, -most, most)};
    const auto offsets = offsetsAround(wanted);
    if (!offsets) {
        return to;
    }
    return withinRange(firstShowing(wanted, *offsets).value_or(minus(wanted, offsets->before)));
}

}  // namespace velko
