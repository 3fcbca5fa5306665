#pragma once

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Layout/UndoHistory.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

/// The cause in names of files, in the log and in what commands print: "fresh-start".
[[nodiscard]] std::string_view name(HistoryCause cause) noexcept;

/// What the name of a kept layout's file says. The order is that in which files were kept.
struct HistoryEntry {
    std::uint32_t number = 0;           ///< grows with each file, whatever the clock says
    std::chrono::local_seconds when{};  ///< what the clock on the wall showed
    HistoryCause cause = HistoryCause::change;

    auto operator<=>(const HistoryEntry&) const = default;

    /// The file's name: "2026-03-01-093000-0042-import.json".
    [[nodiscard]] std::string file() const;
    /// Nothing if a file has any other name: it is not one of these.
    [[nodiscard]] static std::optional<HistoryEntry> named(std::string_view file);
};

/// A layout as it was before something changed it.
struct EarlierLayout {
    HistoryEntry entry;
    std::expected<Layout, FileError> layout;  ///< or why the file cannot be read

    bool operator==(const EarlierLayout&) const = default;
};

/// The folder with layouts of earlier days, beside the layout's own file. What others put into it stays as it
/// is. Keeps nothing but the folder's location, takes no lock. Blocks until done; main thread, because it
/// asks the calendar.
class LayoutHistory {
 public:
    static constexpr std::size_t most = 20;  ///< files
    static constexpr std::uint32_t lastNumber = 999'999'999;

    LayoutHistory(const std::filesystem::path& layoutFile, FileCalls calls);

    [[nodiscard]] const std::filesystem::path& folder() const noexcept { return folder_; }

    /// All that is kept, the newest first. None if there is no folder.
    [[nodiscard]] std::expected<std::vector<HistoryEntry>, FileError> entries() const;

    /// The same with what is in the files.
    [[nodiscard]] std::expected<std::vector<EarlierLayout>, FileError> list() const;

    /// Keeps a layout, written as the layout's own file is, and removes the oldest beyond `most`.
    [[nodiscard]] std::expected<HistoryEntry, FileError> keep(const Layout& layout, HistoryCause cause,
                                                              Date now) const;

    /// The same with a file as it is, because it cannot be understood. Nothing if there is no such file.
    [[nodiscard]] std::expected<std::optional<HistoryEntry>, FileError> keepFile(
        const std::filesystem::path& file, HistoryCause cause, Date now) const;

 private:
    [[nodiscard]] std::expected<HistoryEntry, FileError> write(std::string_view content, HistoryCause cause,
                                                               Date now) const;

    std::filesystem::path folder_;
    FileCalls calls_;
};

/// What restoring an earlier layout makes of the one of now. What the user has decided is as it was then.
/// What Velko has learnt stays: clicks, and which apps have come. An app that came later, or that waited
/// for an answer then, stays where it is now.
[[nodiscard]] Layout restored(const Layout& now, const Layout& earlier);

/// What restoring would change.
struct RestoredChanges {
    /// An app that would be in another section.
    struct Move {
        BundleID bundleID;
        Section section;  ///< where it was then

        bool operator==(const Move&) const = default;
    };
    std::vector<Move> moves{};  ///< in the order of the identifiers
    bool settings = false;      ///< any of what the user has decided beside the places

    [[nodiscard]] bool areNone() const noexcept { return moves.empty() && !settings; }
    bool operator==(const RestoredChanges&) const = default;
};

[[nodiscard]] RestoredChanges changesOfRestoring(const Layout& now, const Layout& earlier);

}  // namespace velko
