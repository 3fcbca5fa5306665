#include "VelkoCore/Layout/LayoutHistory.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <iterator>
#include <ranges>
#include <system_error>
#include <utility>

#include "VelkoCore/Layout/LayoutFormats.h"

namespace velko {

namespace {

constexpr std::array<std::string_view, 5> causeNames{"change", "import", "sort", "fresh-start", "restore"};
constexpr std::string_view historyExtension = ".json";
constexpr std::size_t usualDigits = 4;  // of a number; so most names are in the order of the files

void appendDigits(std::string& text, std::uint64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    text.append(width > digits.size() ? width - digits.size() : 0, '0').append(digits);
}

/// Takes a number off the front of a text: as many digits as `width` says, or all that there are.
std::optional<std::uint32_t> takeNumber(std::string_view& text, std::size_t width = std::string_view::npos) {
    std::uint32_t number = 0;
    const std::string_view digits = text.substr(0, std::min(width, text.find_first_not_of("0123456789")));
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || (width != std::string_view::npos && digits.size() != width)) {
        return std::nullopt;
    }
    text.remove_prefix(digits.size());
    return number;
}

bool takeDash(std::string_view& text) {
    const bool isThere = text.starts_with('-');
    text.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

/// Takes "2026-03-01-093000-" off the front of a text.
std::optional<std::chrono::local_seconds> takeTime(std::string_view& text) {
    std::array<std::uint32_t, 6> parts{};
    constexpr std::array<std::size_t, 6> widths{4, 2, 2, 2, 2, 2};
    for (std::size_t part = 0; part < parts.size(); ++part) {
        const auto number = takeNumber(text, widths.at(part));
        const bool endsWithDash = part != 3 && part != 4;
        if (!number || (endsWithDash && !takeDash(text))) {
            return std::nullopt;
        }
        parts.at(part) = *number;
    }
    const std::chrono::year_month_day day{std::chrono::year(static_cast<int>(parts[0])),
                                          std::chrono::month(parts[1]), std::chrono::day(parts[2])};
    if (!day.ok() || parts[3] > 23 || parts[4] > 59 || parts[5] > 59) {
        return std::nullopt;
    }
    return std::chrono::local_days{day} + std::chrono::hours(parts[3]) + std::chrono::minutes(parts[4]) +
           std::chrono::seconds(parts[5]);
}

FileError folderError(const std::filesystem::path& folder, const std::error_code& error) {
    return {folder.string() + ": the folder cannot be read: " + error.message()};
}

EarlierLayout readEarlier(const std::filesystem::path& folder, const HistoryEntry& entry,
                          const FileCalls& calls) {
    const std::filesystem::path file = folder / entry.file();
    const auto content = AtomicFile::readOwn(file, calls);
    if (!content) {
        return {.entry = entry, .layout = std::unexpected(content.error())};
    }
    const std::optional<std::string>& text = *content;
    if (!text) {
        return {.entry = entry, .layout = std::unexpected(FileError{file.string() + ": it is gone"})};
    }
    auto layout = decodeLayout(*text);
    if (!layout) {
        return {.entry = entry,
                .layout = std::unexpected(FileError{file.string() + ": " + layout.error().description})};
    }
    return {.entry = entry, .layout = *std::move(layout)};
}

}  // namespace

std::string_view name(HistoryCause cause) noexcept {
    return causeNames[static_cast<std::size_t>(cause)];
}

std::string HistoryEntry::file() const {
    const auto day = std::chrono::floor<std::chrono::days>(when);
    const std::chrono::year_month_day date{day};
    const std::chrono::hh_mm_ss time{when - day};
    std::string text;
    appendDigits(text, static_cast<unsigned>(static_cast<int>(date.year())), 4);
    text += '-';
    appendDigits(text, static_cast<unsigned>(date.month()), 2);
    text += '-';
    appendDigits(text, static_cast<unsigned>(date.day()), 2);
    text += '-';
    appendDigits(text, static_cast<std::uint64_t>(time.hours().count()), 2);
    appendDigits(text, static_cast<std::uint64_t>(time.minutes().count()), 2);
    appendDigits(text, static_cast<std::uint64_t>(time.seconds().count()), 2);
    text += '-';
    appendDigits(text, number, usualDigits);
    return text.append("-").append(name(cause)).append(historyExtension);
}

std::optional<HistoryEntry> HistoryEntry::named(std::string_view file) {
    std::string_view rest = file;
    const auto when = takeTime(rest);
    const auto number = when ? takeNumber(rest) : std::nullopt;
    if (!number || *number > LayoutHistory::lastNumber || !takeDash(rest) ||
        !rest.ends_with(historyExtension)) {
        return std::nullopt;
    }
    rest.remove_suffix(historyExtension.size());
    const auto* const cause = std::ranges::find(causeNames, rest);
    if (cause == causeNames.end()) {
        return std::nullopt;
    }
    const HistoryEntry entry{
        .number = *number, .when = *when, .cause = static_cast<HistoryCause>(cause - causeNames.begin())};
    return entry.file() == file ? std::optional(entry) : std::nullopt;  // one file, one way to write it
}

LayoutHistory::LayoutHistory(const std::filesystem::path& layoutFile, FileCalls calls)
    : folder_(layoutFile.parent_path() / "history"), calls_(std::move(calls)) {}

std::expected<std::vector<HistoryEntry>, FileError> LayoutHistory::entries() const {
    std::vector<HistoryEntry> found;
    std::error_code error;
    std::filesystem::directory_iterator place(folder_, error);
    if (error == std::errc::no_such_file_or_directory) {
        return found;
    }
    for (; !error && place != std::filesystem::directory_iterator(); place.increment(error)) {
        if (const auto entry = HistoryEntry::named(place->path().filename().native())) {
            found.push_back(*entry);
        }
    }
    if (error) {
        return std::unexpected(folderError(folder_, error));
    }
    std::ranges::sort(found, std::greater());
    return found;
}

std::expected<std::vector<EarlierLayout>, FileError> LayoutHistory::list() const {
    const auto found = entries();
    if (!found) {
        return std::unexpected(found.error());
    }
    std::vector<EarlierLayout> all;
    all.reserve(found->size());
    for (const HistoryEntry& entry : *found) {
        all.push_back(readEarlier(folder_, entry, calls_));
    }
    return all;
}

std::expected<HistoryEntry, FileError> LayoutHistory::keep(const Layout& layout, HistoryCause cause,
                                                           Date now) const {
    return write(encodeLayout(layout), cause, now);
}

std::expected<std::optional<HistoryEntry>, FileError> LayoutHistory::keepFile(
    const std::filesystem::path& file, HistoryCause cause, Date now) const {
    const auto content = AtomicFile::readOwn(file, calls_);
    if (!content) {
        return std::unexpected(content.error());
    }
    const std::optional<std::string>& text = *content;
    if (!text) {
        return std::nullopt;
    }
    const auto written = write(*text, cause, now);
    if (!written) {
        return std::unexpected(written.error());
    }
    return *written;
}

std::expected<HistoryEntry, FileError> LayoutHistory::write(std::string_view content, HistoryCause cause,
                                                            Date now) const {
    auto kept = entries();
    if (!kept) {
        return std::unexpected(kept.error());
    }
    const std::uint32_t last = kept->empty() ? 0 : kept->front().number;
    if (last == lastNumber) {
        return std::unexpected(FileError{folder_.string() + ": its names are used up"});
    }
    // A day is enough for every zone, so the year has four digits on the wall too.
    const Date written =
        std::clamp(now, earliestDate + std::chrono::days(1), latestDate - std::chrono::days(1));
    const HistoryEntry entry{.number = last + 1, .when = Calendar().localTime(written), .cause = cause};
    if (const auto done = AtomicFile::replace(folder_ / entry.file(), content, calls_); !done) {
        return std::unexpected(done.error());
    }
    kept->insert(kept->begin(), entry);
    for (std::size_t oldest = most; oldest < kept->size(); ++oldest) {
        calls_.unlink((folder_ / (*kept)[oldest].file()).c_str());  // one that stays is removed next time
    }
    return entry;
}

}  // namespace velko
