#pragma once

#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

/// The shared workspace.
class MacWorkspace final : public Workspace {
 public:
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] std::optional<BundleID> bundleID(ProcessID pid) const override;
    [[nodiscard]] std::vector<ProcessID> pids(const BundleID& bundleID) const override;
    [[nodiscard]] std::optional<std::string> installedName(const BundleID& bundleID) const override;
    [[nodiscard]] Subscription observe(std::function<void(const WorkspaceNotice&)> handler) override;
    void terminate(const BundleID& bundleID) override;
    bool openURL(const std::string& url) override;
};

}  // namespace velko
