#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Reads the menu bar when asked and hands over the newest answer only. A full scan that no app answers says
/// nothing and is made good by the next. Main thread; owned by the controller.
class InventoryScan final : private NonCopyable {
 public:
    using Depth = ScanDepth;

    /// Receives an accepted answer and how it was read.
    using Accept = std::function<void(std::vector<MenuBarItem>, Depth)>;

    /// `known` gives the items that a scan starts from; `silence` is told when a full scan met nothing else.
    InventoryScan(const Platform& platform, std::function<std::vector<MenuBarItem>()> known, Accept accept,
                  std::function<void()> silence);

    /// Starts a scan. One that is still under way is dropped. A light one becomes full while a full one is
    /// still to be answered.
    void request(Depth depth);

    /// Scans lightly a few times in the next seconds: a new app often adds its icon late.
    void followLaunch();

    /// Whether none has been asked for in the last while, so that a light one may be due.
    [[nodiscard]] bool isQuiet() const;

    /// Drops every scan, running or to come.
    void cancel() noexcept;

 private:
    void answerFull(Inventory::Found found);

    Platform platform_;
    std::function<std::vector<MenuBarItem>()> known_;
    Accept accept_;
    std::function<void()> silence_;
    bool owesFull_ = false;  ///< a full scan was asked for, and none has been answered since
    Task running_;
    std::optional<MainThread::Uptime> lastRequest_;
    std::vector<Task> rescans_;
};

}  // namespace velko
