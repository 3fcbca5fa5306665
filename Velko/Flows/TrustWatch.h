#pragma once

#include <functional>

#include "Velko/Flows/FlowHost.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Notices that the user has given or taken the Accessibility permission, which the system tells nobody.
/// Main thread; owned by the controller.
class TrustWatch final {
 public:
    /// `changed` is told what holds now, whenever it is not what the health says.
    TrustWatch(FlowHost& host, const Platform& platform, std::function<void(bool trusted)> changed);
    TrustWatch(const TrustWatch&) = delete;
    TrustWatch& operator=(const TrustWatch&) = delete;
    ~TrustWatch() = default;

    void start();
    void stop() noexcept { loop_.cancel(); }

    /// Looks now. Whether the permission is there.
    bool check();

 private:
    FlowHost& host_;
    Platform platform_;
    std::function<void(bool)> changed_;
    Task loop_;
};

}  // namespace velko
