#pragma once

#include <optional>
#include <string>

#include "Scenarios/Language/Step.h"
#include "Scenarios/World.h"
#include "VelkoCore/Layout/Layout.h"

namespace velko::scenarios {

/// What holds of the layout file: it has what Velko has in memory once nothing waits to be saved, and what
/// Velko could not read is never lost. One thread.
class LayoutFileRules final {
 public:
    explicit LayoutFileRules(World& world) : world_(world) {}

    /// Looks at the file after a step. What does not hold, in one line.
    [[nodiscard]] std::optional<std::string> check(const script::Step& done);

 private:
    [[nodiscard]] std::optional<std::string> checkSaved();
    [[nodiscard]] std::optional<std::string> checkUnreadable(const script::Step& done);
    [[nodiscard]] bool isKeptBeside(const std::string& content) const;

    World& world_;
    std::optional<Layout> layout_;           ///< as Velko had it at the last look
    MainThread::Uptime changedAt_{0};        ///< when that was new
    bool mayDiffer_ = false;                 ///< a save failed, or somebody else wrote the file
    std::optional<std::string> unreadable_;  ///< what somebody else wrote to spoil the file
    bool isKnown_ = false;                   ///< whether Velko has tried to read that
};

}  // namespace velko::scenarios
