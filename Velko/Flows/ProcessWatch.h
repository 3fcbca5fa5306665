#pragma once

#include <functional>
#include <optional>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Watching/LiveActivityDetector.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Beat;
class Log;

/// Measures every half minute what the apps in the menu bar cost. Main thread; owned by the controller.
class UsageSampling final : private NonCopyable {
 public:
    /// `afterEach` is called after every round but those asked for by `sampleNow`.
    UsageSampling(FlowHost& host, const Platform& platform, std::function<void()> afterEach);

    /// Adds its rounds to the beat.
    void start(Beat& beat);

    /// Takes one sample per app that owns items.
    void sampleNow();

 private:
    FlowHost& host_;
    Platform platform_;
    std::function<void()> afterEach_;
    UsageTracker tracker_;
};

/// Shows the whole bar while an iPhone Live Activity runs, and tidies when it is over. Main thread; owned
/// by the controller.
class LiveActivityWatch final : private NonCopyable {
 public:
    LiveActivityWatch(FlowHost& host, const Platform& platform, Log& log);

    /// Adds its looks to the beat.
    void start(Beat& beat);

    /// The user has switched Live Activities on or off.
    void settingChanged();

 private:
    void look();
    [[nodiscard]] bool isShowing(Uptime at);
    void conclude(bool isShowing);

    FlowHost& host_;
    Platform platform_;
    Log& log_;
    LiveActivityDetector detector_;
    std::optional<ProcessID> pid_;  ///< the process that draws Live Activities, as last found
};

}  // namespace velko
