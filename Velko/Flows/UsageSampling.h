#pragma once

#include <functional>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Measures every half minute what the apps in the menu bar cost. Main thread; owned by the controller.
class UsageSampling final : private NonCopyable {
 public:
    /// `afterEach` is called after every round but those asked for by `sampleNow`.
    UsageSampling(FlowHost& host, const Platform& platform, std::function<void()> afterEach);

    void start();
    void stop() noexcept { loop_.cancel(); }

    /// Takes one sample per app that owns items.
    void sampleNow();

 private:
    FlowHost& host_;
    Platform platform_;
    std::function<void()> afterEach_;
    UsageTracker tracker_;
    Task loop_;
};

}  // namespace velko
