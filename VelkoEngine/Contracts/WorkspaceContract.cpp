#include <algorithm>
#include <limits>
#include <set>
#include <string>

#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::Contracts {

void checkWorkspace(const Platform& platform, Checks& checks) {
    Workspace& workspace = platform.workspace;
    const auto applications = workspace.runningApplications();
    const auto seen = std::to_string(applications.size()) + " applications";
    expect(checks, "workspace: this process is among the running applications",
           std::ranges::count(applications, platform.processes.ownPID(), &RunningApplication::pid) == 1,
           seen);

    std::set<ProcessID> pids;
    for (const auto& application : applications) {
        pids.insert(application.pid);
    }
    expect(checks, "workspace: every running application has a process number of its own",
           pids.size() == applications.size(), seen);

    const auto lost = std::ranges::find_if(applications, [&](const auto& application) {
        const auto found =
            application.bundleID ? workspace.pids(*application.bundleID) : std::vector{application.pid};
        return std::ranges::count(found, application.pid) != 1;
    });
    expect(checks, "workspace: an application is found by its identifier", lost == applications.end(),
           lost == applications.end() ? "" : lost->bundleID.value_or(""));
    const auto misnamed = std::ranges::find_if(applications, [&](const auto& application) {
        return workspace.bundleID(application.pid) != application.bundleID;
    });
    expect(checks, "workspace: a process tells the identifier of its application",
           misnamed == applications.end(),
           misnamed == applications.end() ? "" : misnamed->bundleID.value_or("none"));
    expect(checks, "workspace: a process that does not exist has no identifier",
           !workspace.bundleID(std::numeric_limits<ProcessID>::max()));
    expect(checks, "workspace: nobody is found by an identifier that nobody has",
           workspace.pids("app.velko.nobody-has-this").empty() &&
               !workspace.installedName("app.velko.nobody-has-this"));

    Subscription subscription = workspace.observe([](const WorkspaceNotice&) {});
    const bool wasActive = subscription.isActive();
    subscription.end();
    expect(checks, "workspace: observing can be ended", wasActive && !subscription.isActive());
    expect(checks, "workspace: what is no address is not opened", !workspace.openURL(""));
}

}  // namespace velko::Contracts
