#include "VelkoEngine/Inventory.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <utility>

#include "VelkoEngine/AX.h"
#include "VelkoEngine/GatheredReads.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::Inventory {

namespace {

using Items = std::vector<MenuBarItem>;

bool isAppBundle(std::string_view path) {
    while (path.ends_with('/')) {
        path.remove_suffix(1);
    }
    return std::filesystem::path(path).extension() == ".app";
}

Items readItems(const Accessibility& accessibility, const AppRef& app) {
    Items items;
    for (const AXElement& element : AX::statusItems(accessibility, app.pid)) {
        if (const auto frame = AX::frame(accessibility, element)) {
            items.push_back({.bundleID = app.bundleID,
                             .appName = app.name,
                             .pid = app.pid,
                             .title = AX::title(accessibility, element),
                             .frame = *frame});
        }
    }
    return items;
}

/// Left to right; equal left edges keep their order.
void sortByLeftEdge(Items& items) {
    std::vector<std::pair<double, std::size_t>> order;
    for (const MenuBarItem& item : items) {
        order.emplace_back(item.frame.x, order.size());
    }
    std::ranges::sort(order);
    Items sorted;
    sorted.reserve(items.size());
    for (const auto& [leftEdge, index] : order) {
        sorted.push_back(std::move(items[index]));
    }
    items = std::move(sorted);
}

/// Adds what the apps' reading yields to items that are known already.
Task itemsOf(const Platform& platform, std::vector<AppRef> apps, Items known, ItemsHandler then) {
    return gatherReads(
        platform.mainThread, std::move(apps),
        [&accessibility = platform.accessibility](const AppRef& app) {
            return readItems(accessibility, app);
        },
        [known = std::move(known), then = std::move(then)](std::vector<Items> perApp) mutable {
            for (Items& items : perApp) {
                std::ranges::move(items, std::back_inserter(known));
            }
            sortByLeftEdge(known);
            then(std::move(known));
        });
}

bool hasPID(const auto& entries, ProcessID pid) {
    return std::ranges::any_of(entries, [pid](const auto& entry) { return entry.pid == pid; });
}

}  // namespace

std::vector<AppRef> runningApps(const Platform& platform) {
    const ProcessID ownPID = platform.processes.ownPID();
    std::vector<AppRef> apps;
    for (RunningApplication& app : platform.workspace.runningApplications()) {
        if (app.pid == ownPID || !app.bundlePath || !isAppBundle(*app.bundlePath) || !app.bundleID) {
            continue;
        }
        std::string name = std::move(app.localizedName).value_or(*app.bundleID);
        apps.push_back({.pid = app.pid, .bundleID = *std::move(app.bundleID), .name = std::move(name)});
    }
    return apps;
}

Task items(const Platform& platform, ItemsHandler then) {
    return itemsOf(platform, runningApps(platform), {}, std::move(then));
}

Task items(const Platform& platform, Items known, ItemsHandler then) {
    std::vector<AppRef> apps = runningApps(platform);
    std::erase_if(known, [&](const MenuBarItem& item) { return !hasPID(apps, item.pid); });
    std::erase_if(apps, [&](const AppRef& app) { return hasPID(known, app.pid); });
    return itemsOf(platform, std::move(apps), std::move(known), std::move(then));
}

std::optional<Rect> ownItemFrame(const Platform& platform) {
    const auto own = AX::statusItems(platform.accessibility, platform.processes.ownPID());
    return own.empty() ? std::nullopt : AX::frame(platform.accessibility, own.front());
}

}  // namespace velko::Inventory
