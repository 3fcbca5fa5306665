#pragma once

#include <optional>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Finds out where the menus of the front app end, while that may decide whether icons have room in the bar:
/// with few icons it never does, and then nobody is asked. Main thread; owned by the controller.
class FrontMenus final : private NonCopyable {
 public:
    /// Both outlive this.
    FrontMenus(FlowHost& host, const Platform& platform);

    /// Where they end, as x on the screen; nothing while nobody knows.
    [[nodiscard]] std::optional<double> end() const noexcept { return end_; }
    /// Begins to hear of apps that come to the front.
    void start();
    /// The displays have changed, or apps have had time to change their menus.
    void readAgain();

 private:
    void read(ProcessID front);
    [[nodiscard]] bool mayDecide() const;

    FlowHost& host_;
    Platform platform_;
    std::optional<double> end_;
    std::optional<ProcessID> front_;  ///< nothing until an app has come to the front
    Subscription notices_;
    Task reading_;
};

}  // namespace velko
