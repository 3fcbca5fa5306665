#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Scenarios/Language/Step.h"
#include "Scenarios/World.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/LayoutHistory.h"
#include "VelkoCore/Layout/ManagedLayout.h"

namespace velko::scenarios {

/// Rules about the layout file. Once nothing waits to be saved, it contains what Velko has in memory. A file
/// that Velko could not read is never lost. Every earlier layout in the history can be restored, but for
/// those that were spoilt before, and only the oldest ones go. What is managed holds, and never gets into
/// the file. One thread.
class LayoutFileRules final {
 public:
    explicit LayoutFileRules(World& world) : world_(world) {}

    /// Looks at the file after a step. Returns what is wrong, in one line.
    [[nodiscard]] std::optional<std::string> check(const script::Step& done);

 private:
    [[nodiscard]] std::optional<std::string> checkManaged(const script::Step& done);
    [[nodiscard]] std::optional<std::string> checkSaved();
    [[nodiscard]] std::optional<std::string> checkUnreadable(const script::Step& done);
    [[nodiscard]] std::optional<std::string> checkHistory();
    [[nodiscard]] bool canBeRestored(const std::filesystem::path& file) const;
    [[nodiscard]] bool isKeptBeside(const std::string& content) const;

    World& world_;
    ManagedLayout managed_;                  ///< what was managed at the last look
    std::optional<Layout> own_;              ///< the user's own then; absent: Velko did not run
    std::vector<ManagedLayout> placed_{{}};  ///< what holds, and all that was placed since it was read
    std::optional<Layout> layout_;           ///< Velko's layout at the last look
    MainThread::Uptime changedAt_{0};        ///< when that layout was new
    bool mayDiffer_ = false;                 ///< a save failed, or somebody else wrote the file
    std::optional<std::string> unreadable_;  ///< what somebody else wrote to spoil the file
    bool isKnown_ = false;                   ///< whether Velko has tried to read that
    std::set<std::string> foreign_;          ///< all that somebody else has written into the file
    std::vector<HistoryEntry> history_;      ///< at the last look, the newest first
};

}  // namespace velko::scenarios
