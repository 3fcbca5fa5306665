#include "Velko/Apps/AppNames.h"

#include <string_view>

#include "Velko/Apps/PresentApps.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

std::string nameOf(const AppValues& values, const Workspace& workspace, const BundleID& bundleID) {
    if (isPresent(values, bundleID)) {
        return appName(values, bundleID);
    }
    for (const RunningApplication& app : workspace.runningApplications()) {
        if (app.bundleID == bundleID && app.localizedName) {
            return *app.localizedName;
        }
    }
    return nameAtRest(workspace, bundleID);
}

std::string nameAtRest(const Workspace& workspace, const BundleID& bundleID) {
    constexpr std::string_view extension = ".app";
    std::string name = workspace.installedName(bundleID).value_or("");
    if (name.ends_with(extension)) {
        name.resize(name.size() - extension.size());
    }
    return name.empty() ? bundleID : name;
}

}  // namespace velko
