#include "Velko/Settings/ListedApps.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "Velko/AppController.h"
#include "Velko/Apps/PresentApps.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

/// The apps that run, by identifier, with their names.
std::map<BundleID, std::string> runningApps(const Workspace& workspace) {
    std::map<BundleID, std::string> running;
    for (const RunningApplication& app : workspace.runningApplications()) {
        if (app.bundleID) {
            running.emplace(*app.bundleID, app.localizedName.value_or(*app.bundleID));
        }
    }
    return running;
}

/// The name of an app that does not run: without its extension, or its identifier when it is not installed.
std::string nameAtRest(const Workspace& workspace, const BundleID& bundleID) {
    constexpr std::string_view extension = ".app";
    std::string name = workspace.installedName(bundleID).value_or("");
    if (name.ends_with(extension)) {
        name.resize(name.size() - extension.size());
    }
    return name.empty() ? bundleID : name;
}

std::string folded(std::string name) {
    for (char& c : name) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return name;
}

bool comesBefore(const ListedApp& left, const ListedApp& right) {
    return std::pair(folded(left.name), left.bundleID) < std::pair(folded(right.name), right.bundleID);
}

}  // namespace

std::vector<ListedApp> listedApps(const AppController& controller, const Workspace& workspace) {
    using Presence = ListedApp::Presence;
    const AppValues& values = controller.values();
    std::vector<ListedApp> apps;
    for (const PresentApp& app : presentApps(values)) {
        apps.push_back({.bundleID = app.bundleID, .name = app.name});
    }
    const auto running = runningApps(workspace);
    for (const auto& [bundleID, section] : values.layout.sections) {
        if (!isPresent(values, bundleID)) {
            const auto found = running.find(bundleID);
            const bool runs = found != running.end();
            apps.push_back({.bundleID = bundleID,
                            .name = runs ? found->second : nameAtRest(workspace, bundleID),
                            .presence = runs ? Presence::runningWithoutIcon : Presence::notRunning});
        }
    }
    std::erase_if(apps, [&](const ListedApp& app) { return !canBePlaced(controller, app.bundleID); });
    for (ListedApp& app : apps) {
        app.section = values.layout.section(app.bundleID);
        const auto usage = values.usage.find(app.bundleID);
        if (usage != values.usage.end() && app.presence == Presence::inMenuBar) {
            app.usage = usage->second;
        }
        app.isWaiting = std::ranges::count(values.layout.inbox, app.bundleID) > 0;
        app.isKept = values.layout.alwaysKeep.contains(app.bundleID);
    }
    std::ranges::sort(apps, comesBefore);
    return apps;
}

}  // namespace velko
