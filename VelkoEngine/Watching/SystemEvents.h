#pragma once

#include <functional>
#include <string>
#include <vector>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Subscription.h"
#include "VelkoEngine/Ports/Task.h"
#include "VelkoEngine/Ports/Workspace.h"
#include "VelkoEngine/Watching/ProcessRoll.h"

namespace velko {

/// Listens for whatever may change the menu bar and reports bursts of it as one event, half a second
/// after the last. Main thread; its registrations and timers end with it.
class SystemEvents final : private NonCopyable {
 public:
    /// A burst: `environment` when displays, sleep, Spaces or the session had a part in it, else `apps`.
    struct Kind {
        enum class Scope { environment, apps };

        Scope scope = Scope::apps;
        std::string reason;  ///< every reason in order of arrival, joined with ", "

        bool operator==(const Kind&) const = default;
    };
    using Handler = std::function<void(const Kind&)>;

    SystemEvents(const Platform& platform, Handler handler);

 private:
    void hear(const WorkspaceNotice& notice);
    void note(const ProcessRoll::Events& events);
    /// Adds a reason to the burst and starts its wait anew.
    void note(std::string reason, bool environment);
    void deliver();

    MainThread& mainThread_;
    Workspace& workspace_;
    ProcessRoll roll_;
    Handler handler_;
    std::vector<std::string> pendingReasons_;
    bool pendingEnvironment_ = false;
    Task pending_;
    std::vector<Task> settling_;  ///< one for each wake that is not over yet
    std::vector<Subscription> observers_;
};

}  // namespace velko
