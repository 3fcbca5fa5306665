#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

/// Which applications have been launched and have ended. There are two sources, and neither is complete: the
/// system sends notices for regular apps only, and the list of running applications holds many that can have
/// no icon. Each launch and each end counts once, whichever source shows it first. A value; main thread.
class ProcessRoll final {
 public:
    struct Event {
        bool isLaunch = false;
        std::string app;  ///< its identifier, or "?"

        bool operator==(const Event&) const = default;
    };
    using Events = std::vector<Event>;

    /// `listed`: the applications that run already.
    explicit ProcessRoll(const std::vector<RunningApplication>& listed);

    /// What has changed since the list before. Without a notice, only the launch of an app that may have
    /// icons counts.
    [[nodiscard]] Events compare(const std::vector<RunningApplication>& listed);

    /// What is new in a notice of a launch or an end. Call `compare` with the current list first.
    [[nodiscard]] Events hear(const WorkspaceNotice& notice);

    /// Begins a new burst: later notices are about other launches and ends.
    void beginBurst() { ended_.clear(); }

 private:
    struct Entry {
        std::string app;
        bool isListed = false;  ///< the list has shown it
        bool hasEnded = false;  ///< by a notice, though the list still shows it
    };
    struct End {
        ProcessID pid = 0;
        std::string app;
    };

    [[nodiscard]] Events hearLaunch(const WorkspaceNotice& notice);
    [[nodiscard]] Events hearEnd(const WorkspaceNotice& notice);
    [[nodiscard]] bool isKnownEnd(const WorkspaceNotice& notice) const;

    std::map<ProcessID, Entry> entries_;
    std::vector<End> ended_;  ///< in this burst
};

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
