#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// A running application as the workspace reports it.
struct RunningApplication {
    ProcessID pid = 0;
    std::optional<BundleID> bundleID;
    std::optional<std::string> bundlePath;
    std::optional<std::string> localizedName;

    bool operator==(const RunningApplication&) const = default;
};

/// What the workspace tells its observers.
struct WorkspaceNotice {
    enum class Kind {
        didWake,
        screensDidSleep,
        screensDidWake,
        activeSpaceChanged,
        sessionBecameActive,
        sessionResignedActive,  ///< another user is at the Mac now
        launched,               ///< only for regular apps; few apps in the menu bar are regular
        terminated,             ///< likewise
        activated,
        listChanged,  ///< the list of running applications has changed; apps of every kind
    };

    Kind kind = Kind::didWake;
    std::optional<ProcessID> pid{};      ///< of the app that it is about, when the notice says it
    std::optional<BundleID> bundleID{};  ///< likewise

    bool operator==(const WorkspaceNotice&) const = default;
};

/// The desktop's view of applications and of the session.
class Workspace : private NonCopyable {
 public:
    virtual ~Workspace() = default;

    /// Every running application, in the system's order, this process included. Main thread.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() const = 0;

    /// The identifier of the app that a process runs; nothing when it runs no app, the app has no identifier,
    /// or the process has ended. Main thread.
    [[nodiscard]] virtual std::optional<BundleID> bundleID(ProcessID pid) const = 0;

    /// The processes that run an app with that identifier, in the system's order. Any thread.
    [[nodiscard]] virtual std::vector<ProcessID> pids(const BundleID& bundleID) const = 0;

    /// The name under which the Finder shows an installed app, whether it runs or not, with or without its
    /// ".app"; nothing when there is none. Main thread.
    [[nodiscard]] virtual std::optional<std::string> installedName(const BundleID& bundleID) const = 0;

    /// Places names in the order in which the Finder sorts names for this user: for each name its place. The
    /// same names share a place. Every language sorts in its own way; where the system says nothing, the
    /// order is `NameOrder`. Main thread.
    [[nodiscard]] virtual std::vector<std::size_t> placesOf(const std::vector<std::string>& names) const;

    /// Calls `handler` on the main thread for every notice until the subscription ends. For a regular app,
    /// its own notice and that of the list may come in either order.
    [[nodiscard]] virtual Subscription observe(std::function<void(const WorkspaceNotice&)> handler) = 0;

    /// Asks every process that runs an app with that identifier to quit; each may take its time or decline.
    /// Main thread.
    virtual void terminate(const BundleID& bundleID) = 0;

    /// Opens an address with whatever the system has for it; whether the system took it.
    virtual bool openURL(const std::string& url) = 0;
};

}  // namespace velko
