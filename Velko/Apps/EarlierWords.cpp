#include "Velko/Apps/EarlierWords.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "Velko/Apps/MenuBarApps.h"

namespace velko::EarlierWords {

namespace {

constexpr std::array<std::string_view, 12> months{"January",   "February", "March",    "April",
                                                  "May",       "June",     "July",     "August",
                                                  "September", "October",  "November", "December"};

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string_view wherePhrase(Section section) {
    switch (section) {
        case Section::bar: return " was in the bar";
        case Section::tucked: return " was tucked";
        case Section::buried: break;
    }
    return " was buried";
}

}  // namespace

std::string when(std::chrono::local_seconds moment, std::chrono::local_seconds now) {
    using std::chrono::days;
    const auto day = std::chrono::floor<days>(moment);
    const auto today = std::chrono::floor<days>(now);
    const std::chrono::hh_mm_ss time{moment - day};
    std::string text;
    if (day == today) {
        text = "today";
    } else if (day == today - days(1)) {
        text = "yesterday";
    } else {
        const std::chrono::year_month_day date{day};
        text = std::to_string(static_cast<unsigned>(date.day())) + " ";
        text += months.at(static_cast<unsigned>(date.month()) - 1);
        if (date.year() != std::chrono::year_month_day(today).year()) {
            text += " " + std::to_string(static_cast<int>(date.year()));
        }
    }
    return text + " at " + twoDigits(time.hours().count()) + ":" + twoDigits(time.minutes().count());
}

std::string before(HistoryCause cause) {
    switch (cause) {
        case HistoryCause::change: return "before the day's first change";
        case HistoryCause::import: return "before an import";
        case HistoryCause::sort: return "before sorting";
        case HistoryCause::freshStart: return "before a fresh start";
        case HistoryCause::restore: break;
    }
    return "before another one was restored";
}

std::string differences(const RestoredChanges& changes, const AppValues& values, const AppNames& names) {
    constexpr std::size_t mostNamed = 3;
    if (changes.areNone()) {
        return "The same as now.";
    }
    std::string words;
    if (auto moves = changes.moves; !moves.empty()) {
        std::ranges::sort(moves, {}, [&](const RestoredChanges::Move& move) {
            return std::pair(!isPresent(values, move.bundleID), move.bundleID);
        });
        words = moves.size() == 1 ? "1 app lies elsewhere: "
                                  : std::to_string(moves.size()) + " apps lie elsewhere: ";
        // One more app takes no more room than "and 1 more".
        const std::size_t named =
            moves.size() == mostNamed + 1 ? moves.size() : std::min(moves.size(), mostNamed);
        for (std::size_t index = 0; index < named; ++index) {
            words.append(index > 0 ? ", " : "").append(inSentence(names.of(moves[index].bundleID)));
            words.append(wherePhrase(moves[index].section));
        }
        if (named < moves.size()) {
            words.append(", and ").append(std::to_string(moves.size() - named)).append(" more");
        }
        words += ".";
    }
    if (changes.settings) {
        words.append(words.empty() ? "" : " ").append("Some settings differ.");
    }
    return words;
}

}  // namespace velko::EarlierWords
