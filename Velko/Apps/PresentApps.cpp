#include "Velko/Apps/PresentApps.h"

#include <algorithm>

#include "Velko/App/AppController.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

namespace velko {

std::vector<PresentApp> presentApps(const AppValues& values) {
    std::vector<PresentApp> apps;
    BundleIDs seen;
    for (const MenuBarItem& item : values.items) {
        if (seen.insert(item.bundleID).second) {
            apps.push_back({.bundleID = item.bundleID, .name = item.appName});
        }
    }
    return apps;
}

bool canBePlaced(const AppController& controller, const BundleID& bundleID) {
    return bundleID != controller.ownBundleID() && !AllowlistPlanner::isAlwaysAllowed(bundleID);
}

bool isPresent(const AppValues& values, const BundleID& bundleID) {
    return std::ranges::find(values.items, bundleID, &MenuBarItem::bundleID) != values.items.end();
}

std::string appName(const AppValues& values, const BundleID& bundleID) {
    const auto item = std::ranges::find(values.items, bundleID, &MenuBarItem::bundleID);
    return item == values.items.end() ? bundleID : item->appName;
}

}  // namespace velko
