#pragma once

#include <functional>
#include <optional>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Beat;

/// Notices that the user has given or taken the Accessibility permission, which the system tells nobody and
/// may report wrongly. So other apps are asked as well; of what the system says and what they show, the newer
/// holds. Main thread; owned by the controller.
class TrustWatch final : private NonCopyable {
 public:
    /// `changed` is told what holds now, whenever it is not what the health says.
    TrustWatch(FlowHost& host, const Platform& platform, std::function<void(bool trusted)> changed);

    /// Adds its looks to the beat.
    void start(Beat& beat);

    /// Whether the permission is there, as far as is known. Tells nobody.
    [[nodiscard]] bool holds();

    /// Looks now. Whether the permission is there.
    bool check();

    /// Another app has let itself be read, or the apps that were read just now have all been silent.
    void appsWereRead(bool anyAnswered);

    /// Asks another app, and calls `then` once one has let itself be read. Only the last such call counts;
    /// without the permission it is dropped.
    void prove(std::function<void()> then);

 private:
    void look();
    void ask();
    void hear(bool evidence);

    FlowHost& host_;
    Platform platform_;
    std::function<void(bool)> changed_;
    std::optional<bool> systemSays_;
    bool holds_ = false;
    int looksUntilAsking_ = 0;
    std::function<void()> whenProven_;
    Task asking_;
};

}  // namespace velko
