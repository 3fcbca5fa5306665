#include "Simulator/Desktop/SimulatedWorkspace.h"

#include <chrono>
#include <utility>

namespace velko {

std::vector<RunningApplication> SimulatedWorkspace::runningApplications() const {
    std::vector<RunningApplication> applications;
    applications.reserve(processes_.running().size());
    for (const auto& process : processes_.running()) {
        const SimulatedApp& app = process.app;
        if (!app.isApplication) {
            continue;
        }
        RunningApplication& application = applications.emplace_back();
        application.pid = process.pid;
        if (!app.bundleID.empty()) {
            application.bundleID = app.bundleID;
        }
        if (!app.name.empty()) {
            application.localizedName = app.name;
        }
        if (!app.bundlePath) {
            application.bundlePath = "/Applications/" + app.name + ".app";
        } else if (!app.bundlePath->empty()) {
            application.bundlePath = app.bundlePath;
        }
    }
    return applications;
}

std::optional<BundleID> SimulatedWorkspace::bundleID(ProcessID pid) const {
    const auto* process = processes_.find(pid);
    if (process == nullptr || !process->app.isApplication || process->app.bundleID.empty()) {
        return std::nullopt;
    }
    return process->app.bundleID;
}

std::vector<ProcessID> SimulatedWorkspace::pids(const BundleID& bundleID) const {
    return processes_.applications(bundleID);
}

std::optional<std::string> SimulatedWorkspace::installedName(const BundleID& bundleID) const {
    const auto found = installed_.find(bundleID);
    return found == installed_.end() ? std::nullopt : std::optional(found->second);
}

void SimulatedWorkspace::install(const SimulatedApp& app) {
    if (app.isApplication && !app.bundleID.empty() && !app.name.empty()) {
        installed_[app.bundleID] = app.name + ".app";
    }
}

Subscription SimulatedWorkspace::observe(std::function<void(const WorkspaceNotice&)> handler) {
    return observers_.observe(std::move(handler));
}

void SimulatedWorkspace::terminate(const BundleID& bundleID) {
    for (const ProcessID pid : pids(bundleID)) {
        if (onTerminate) {
            onTerminate(pid);
        }
    }
}

bool SimulatedWorkspace::openURL(const std::string& url) {
    const auto scheme = url.find(':');
    if (scheme == std::string::npos || scheme == 0) {
        return false;
    }
    openedURLs_.push_back(url);
    return true;
}

void SimulatedWorkspace::announce(const SimulatedApp& app, const WorkspaceNotice& notice) {
    constexpr std::chrono::milliseconds announcing{50};  // how much later than the list a notice is
    if (!app.isApplication) {
        return;
    }
    tell({.kind = WorkspaceNotice::Kind::listChanged});
    if (app.isRegular) {
        thread_.happen(announcing, [this, notice] { tell(notice); });
    }
}

}  // namespace velko
