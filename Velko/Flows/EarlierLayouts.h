#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <string>
#include <vector>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/LayoutHistory.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

class Log;

/// Layouts of earlier days, and the way back to them. Main thread; owned by the controller.
class EarlierLayouts final : private NonCopyable {
 public:
    /// `replaced` is called after one has come back. All references outlive this.
    EarlierLayouts(FlowHost& host, const Platform& platform, const LayoutHistory& history, Log& log,
                   std::function<void()> replaced);

    /// All that are kept, the newest first, as they are on the disk now. Reads every file.
    [[nodiscard]] std::expected<std::vector<EarlierLayout>, FileError> list() const;

    /// When and why it was kept: "today at 09:30, before an import".
    [[nodiscard]] std::string title(const HistoryEntry& entry) const;

    /// What restoring that layout would change, in a sentence or two; why it can't be read, if so.
    [[nodiscard]] std::string inWords(const EarlierLayout& earlier) const;

    /// Brings back what the user had decided, and keeps what is now. It can be taken back. On an error
    /// nothing has changed, and the error says why in words for people.
    [[nodiscard]] std::expected<void, std::string> restore(std::uint32_t number);

 private:
    FlowHost& host_;
    const MainThread& mainThread_;
    const Workspace& workspace_;
    const LayoutHistory& history_;
    Log& log_;
    std::function<void()> replaced_;
};

}  // namespace velko
