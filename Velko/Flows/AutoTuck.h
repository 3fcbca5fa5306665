#pragma once

#include <chrono>
#include <functional>

#include "VelkoCore/RevealState.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Tucks revealed icons away again after a while, but never while another app's menu is open: it would be
/// pulled away under the pointer. Main thread; owned by the controller.
class AutoTuck final {
 public:
    /// `tuck` is called when the time has come.
    AutoTuck(const Platform& platform, std::function<void()> tuck);
    AutoTuck(const AutoTuck&) = delete;
    AutoTuck& operator=(const AutoTuck&) = delete;
    ~AutoTuck() = default;

    /// Starts the wait anew when `state` shows tucked icons and `delay` is not zero; else calls it off.
    void rearm(const RevealState& state, std::chrono::seconds delay);

    void cancel() noexcept { wait_.cancel(); }

 private:
    void tuckOrWait();

    Platform platform_;
    std::function<void()> tuck_;
    Task wait_;
};

}  // namespace velko
