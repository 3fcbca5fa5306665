#pragma once

#include <functional>
#include <optional>

#include "Velko/Flows/FlowHost.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Tucks revealed icons away again after a while, but never under the hand: not while another app's menu is
/// open, not while the user does something in the shelf, and for a minute not while the pointer is on what
/// was brought out. Main thread; owned by the controller.
class AutoTuck final : private NonCopyable {
 public:
    /// `tuck` is called when the time has come. What is referred to outlives this.
    AutoTuck(const FlowHost& host, const Platform& platform, const Surface& shelf,
             std::function<void()> tuck);

    /// Starts the wait anew when tucked icons are out and are to go by themselves; else calls it off.
    void rearm();

    /// The user does something in the shelf: if a wait is under way, its time begins anew.
    void touched();

 private:
    void look();
    void lookAtPointer();
    void lookAgain(MainThread::Uptime delay);
    [[nodiscard]] bool mayHold(Point pointer, bool isOnShelf);

    const FlowHost& host_;
    Platform platform_;
    const Surface& shelf_;
    std::function<void()> tuck_;
    Task wait_;
    MainThread::Uptime touchedAt_{};
    std::optional<MainThread::Uptime> heldSince_;  ///< by the pointer alone
    Point pointer_;                                ///< where it was at the last look
};

}  // namespace velko
