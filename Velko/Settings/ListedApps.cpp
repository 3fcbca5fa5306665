#include "Velko/Settings/ListedApps.h"

#include <algorithm>
#include <map>
#include <utility>

#include "Velko/AppController.h"
#include "Velko/Apps/AppNames.h"
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

std::string folded(std::string name) {
    for (char& c : name) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return name;
}

/// Whether the items say what the menu bar holds.
bool seesMenuBar(const AppValues& values) {
    return values.inventoryLoaded && !values.problems.trustMissing && !values.problems.engineUnavailable;
}

bool comesBefore(const ListedApp& left, const ListedApp& right) {
    return std::pair(folded(left.name), left.bundleID) < std::pair(folded(right.name), right.bundleID);
}

}  // namespace

std::vector<ListedApp> listedApps(const AppController& controller, const Workspace& workspace) {
    using Presence = ListedApp::Presence;
    const AppValues& values = controller.values();
    const bool isSeen = seesMenuBar(values);
    const auto running = runningApps(workspace);
    std::vector<ListedApp> apps;
    for (const PresentApp& app : presentApps(values)) {
        const auto unseen = running.contains(app.bundleID) ? Presence::unknown : Presence::notRunning;
        apps.push_back(
            {.bundleID = app.bundleID, .name = app.name, .presence = isSeen ? Presence::inMenuBar : unseen});
    }
    for (const auto& [bundleID, section] : values.layout.sections) {
        if (!isPresent(values, bundleID)) {
            const auto found = running.find(bundleID);
            const bool runs = found != running.end();
            const auto withoutIcon = isSeen ? Presence::runningWithoutIcon : Presence::unknown;
            apps.push_back({.bundleID = bundleID,
                            .name = runs ? found->second : nameAtRest(workspace, bundleID),
                            .presence = runs ? withoutIcon : Presence::notRunning});
        }
    }
    std::erase_if(apps, [&](const ListedApp& app) { return !canBePlaced(controller, app.bundleID); });
    for (ListedApp& app : apps) {
        app.section = values.layout.section(app.bundleID);
        const auto usage = values.usage.find(app.bundleID);
        if (usage != values.usage.end() && isPresent(values, app.bundleID) &&
            app.presence != Presence::notRunning) {
            app.usage = usage->second;
        }
        app.isWaiting = std::ranges::count(values.layout.inbox, app.bundleID) > 0;
        app.isKept = values.layout.alwaysKeep.contains(app.bundleID);
    }
    std::ranges::sort(apps, comesBefore);
    return apps;
}

}  // namespace velko
