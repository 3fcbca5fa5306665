#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Simulator/Desktop/SimulatedObservers.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

/// The workspace's view of the table of processes.
class SimulatedWorkspace final : public Workspace {
 public:
    SimulatedWorkspace(MachineThread& thread, const SimulatedProcesses& processes)
        : thread_(thread), processes_(processes), observers_(thread) {}

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] std::optional<BundleID> bundleID(ProcessID pid) const override;
    [[nodiscard]] std::vector<ProcessID> pids(const BundleID& bundleID) const override;
    [[nodiscard]] std::optional<std::string> installedName(const BundleID& bundleID) const override;
    [[nodiscard]] Subscription observe(std::function<void(const WorkspaceNotice&)> handler) override;
    /// Leaves the decision to `onTerminate`, for each process in turn.
    void terminate(const BundleID& bundleID) override;
    /// Takes every address that has a scheme.
    bool openURL(const std::string& url) override;

    /// Sends a notice to all present observers.
    void tell(const WorkspaceNotice& notice) { observers_.tell(notice); }

    /// Tells that the list of applications has changed because of this app. If it is a regular app, `notice`
    /// follows a moment later.
    void announce(const SimulatedApp& app, const WorkspaceNotice& notice);

    /// Puts an app into the Applications folder, where it stays. An app without an identifier cannot be found
    /// there.
    void install(const SimulatedApp& app);

    /// Called when a process is asked to quit. Without it, nothing happens.
    std::function<void(ProcessID)> onTerminate;

    /// How many observers the workspace has.
    [[nodiscard]] std::size_t observers() const { return observers_.count(); }

    /// The addresses that were opened, oldest first.
    [[nodiscard]] const std::vector<std::string>& openedURLs() const noexcept { return openedURLs_; }

 private:
    MachineThread& thread_;
    const SimulatedProcesses& processes_;
    std::map<BundleID, std::string> installed_;
    SimulatedObservers<WorkspaceNotice> observers_;
    std::vector<std::string> openedURLs_;
};

}  // namespace velko
