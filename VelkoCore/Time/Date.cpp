#include "VelkoCore/Time/Date.h"

#include <algorithm>
#include <cstddef>

namespace velko {

namespace {

using namespace std::chrono;

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Takes the parts of a text off its front; after the first part that does not fit, all others fail too.
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

    /// One or more digits, of no interest.
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
    append(text, static_cast<unsigned>(static_cast<int>(calendarDay.year())), 4, '-');
    append(text, static_cast<unsigned>(calendarDay.month()), 2, '-');
    append(text, static_cast<unsigned>(calendarDay.day()), 2, 'T');
    append(text, static_cast<unsigned>(time.hours().count()), 2, ':');
    append(text, static_cast<unsigned>(time.minutes().count()), 2, ':');
    append(text, static_cast<unsigned>(time.seconds().count()), 2, 'Z');
    return text;
}

}  // namespace velko
