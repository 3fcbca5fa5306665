#pragma once

#include <chrono>
#include <expected>
#include <functional>
#include <optional>
#include <string>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/LayoutHistory.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;

/// Reads the layout from its file, edits it, and writes it: at once, or a while after the last of a burst of
/// edits. A file that could not be read is put aside before it is replaced. Main thread; owned by the
/// controller.
class LayoutKeeping final : private NonCopyable {
 public:
    /// `loaded` is called after each load, and told whether what could not be read before now can. All
    /// references outlive this.
    LayoutKeeping(FlowHost& host, MainThread& mainThread, Log& log, const LayoutStore& store,
                  std::function<void(bool isMended)> loaded);

    /// Reads the file, or makes one where there is none. A save still to come is forgotten. A file that
    /// cannot be read is left as it is.
    void load();

    /// The layout as the user has decided it, without what is managed.
    [[nodiscard]] const Layout& own() const noexcept { return own_; }

    /// Lays what is managed now over the user's own layout.
    void layManagedOver();

    /// Edits the layout and saves it as `saving` says. Whether the file now holds the layout. Before one of
    /// the user's own edits the layout is kept in the history: with the first of a day, and with each that
    /// has a cause of its own. Where that fails the edit goes on, and the log and `historyFailure` say so.
    bool edit(Saving saving, const FlowHost::Edit& change, HistoryCause cause = HistoryCause::change);

    /// The layouts that were kept.
    [[nodiscard]] const LayoutHistory& history() const noexcept { return history_; }

    /// Saves `Timing::saveDelay` from now, or later when another edit comes before.
    void schedule();

    /// Saves now; a failure is logged, the layout in memory stays, and so does a save still to come. A layout
    /// that replaces an unreadable file is loaded again. Whether the file now holds the layout.
    bool saveNow();

    /// Saves now what was to be saved later or could not be saved, if anything.
    void finish();

 private:
    /// The layout in the file, a fresh one where there is none, or the problem in words.
    [[nodiscard]] std::expected<Layout, std::string> read();
    void keepEarlier(HistoryCause cause, bool isChanged);
    [[nodiscard]] std::expected<std::optional<HistoryEntry>, FileError> keepFor(HistoryCause cause,
                                                                                bool isChanged);
    [[nodiscard]] std::expected<bool, FileError> isKeptOn(std::chrono::local_days day) const;
    bool save();
    // Each says why it failed.
    [[nodiscard]] std::optional<std::string> write();
    [[nodiscard]] std::optional<std::string> putUnreadableFileAside();

    FlowHost& host_;
    MainThread& mainThread_;
    Log& log_;
    const LayoutStore& store_;
    std::function<void(bool)> loaded_;
    Layout own_;
    LayoutHistory history_;
    std::optional<std::chrono::local_days> keptDay_;  ///< of the last one, when the day's first is kept
    bool isBrokenFileKept_ = false;
    bool fileUnreadable_ = false;  ///< the file holds what could not be read, and the next save keeps it
    Task pending_;
};

}  // namespace velko
