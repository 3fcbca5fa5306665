#include "VelkoEngine/MenuBar/Inventory.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "VelkoEngine/Background/GatheredReads.h"
#include "VelkoEngine/MenuBar/AX.h"
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

/// What an app says of its items; nothing when it keeps silent.
struct Answer {
    ProcessID pid = 0;
    std::optional<Items> items;
};

Answer ask(const Accessibility& accessibility, const AppRef& app) {
    const auto elements = AX::statusItemsIfHeard(accessibility, app.pid);
    if (!elements) {
        return {.pid = app.pid, .items = std::nullopt};
    }
    Items items;
    bool fellSilent = false;
    for (const AXElement& element : *elements) {
        const AXAnswer position = accessibility.attribute(element, "AXPosition");
        const AXAnswer size = position ? accessibility.attribute(element, "AXSize") : position;
        if (const auto frame = AX::frame(position, size)) {
            items.push_back({.bundleID = app.bundleID,
                             .appName = app.name,
                             .pid = app.pid,
                             .title = AX::title(accessibility, element),
                             .frame = *frame});
        } else if (!AX::isHeard(size)) {
            fellSilent = true;
        }
    }
    const bool isHeard = !fellSilent || !items.empty();
    return {.pid = app.pid, .items = isHeard ? std::optional(std::move(items)) : std::nullopt};
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

bool hasPID(const auto& entries, ProcessID pid) {
    return std::ranges::any_of(entries, [pid](const auto& entry) { return entry.pid == pid; });
}

/// What the apps' answers make of the items that are known.
Found foundBy(std::vector<Answer> answers, Items known) {
    const bool isAnyAsked = !answers.empty();
    std::erase_if(answers, [](const Answer& answer) { return !answer.items; });
    std::erase_if(known, [&](const MenuBarItem& item) { return hasPID(answers, item.pid); });
    for (Answer& answer : answers) {
        std::ranges::move(std::move(answer.items).value_or(Items()), std::back_inserter(known));
    }
    sortByLeftEdge(known);
    return {.items = std::move(known), .isHeard = !isAnyAsked || !answers.empty()};
}

/// Asks some of the running apps.
Task askThem(const Platform& platform, std::vector<AppRef> apps, Items known, ItemsHandler then) {
    return gatherReads(
        platform.mainThread, std::move(apps),
        [&accessibility = platform.accessibility](const AppRef& app) { return ask(accessibility, app); },
        [known = std::move(known), then = std::move(then)](std::vector<Answer> answers) mutable {
            then(foundBy(std::move(answers), std::move(known)));
        });
}

void forgetEnded(Items& known, const std::vector<AppRef>& running) {
    std::erase_if(known, [&](const MenuBarItem& item) { return !hasPID(running, item.pid); });
}

}  // namespace

bool mayHaveItems(const RunningApplication& app) {
    return isReal(app.pid) && app.bundlePath && isAppBundle(*app.bundlePath) && app.bundleID;
}

std::vector<AppRef> runningApps(const Platform& platform) {
    const ProcessID ownPID = platform.processes.ownPID();
    std::vector<AppRef> apps;
    for (RunningApplication& app : platform.workspace.runningApplications()) {
        if (app.pid != ownPID && mayHaveItems(app)) {
            BundleID bundleID = std::move(app.bundleID).value_or(BundleID());
            std::string name = std::move(app.localizedName).value_or(bundleID);
            apps.push_back({.pid = app.pid, .bundleID = std::move(bundleID), .name = std::move(name)});
        }
    }
    return apps;
}

Task items(const Platform& platform, Items known, ItemsHandler then) {
    std::vector<AppRef> apps = runningApps(platform);
    forgetEnded(known, apps);
    return askThem(platform, std::move(apps), std::move(known), std::move(then));
}

Task itemsAdding(const Platform& platform, Items known, ItemsHandler then) {
    std::vector<AppRef> apps = runningApps(platform);
    forgetEnded(known, apps);
    std::erase_if(apps, [&](const AppRef& app) { return hasPID(known, app.pid); });
    return askThem(platform, std::move(apps), std::move(known), std::move(then));
}

Task frames(const Platform& platform, const std::set<ProcessID>& pids,
            std::function<void(std::vector<Rect>)> then) {
    using Frames = std::vector<Rect>;
    return gatherReads(
        platform.mainThread, std::vector<ProcessID>(pids.begin(), pids.end()),
        [&accessibility = platform.accessibility](ProcessID pid) {
            Frames frames;
            for (const AXElement& element : AX::statusItems(accessibility, pid)) {
                if (const auto frame = AX::frame(accessibility, element)) {
                    frames.push_back(*frame);
                }
            }
            return frames;
        },
        [then = std::move(then)](const std::vector<Frames>& perProcess) {
            Frames all;
            for (const Frames& frames : perProcess) {
                all.insert(all.end(), frames.begin(), frames.end());
            }
            then(std::move(all));
        });
}

std::optional<Rect> ownItemFrame(const Platform& platform) {
    const auto own = AX::statusItems(platform.accessibility, platform.processes.ownPID());
    return own.empty() ? std::nullopt : AX::frame(platform.accessibility, own.front());
}

}  // namespace velko::Inventory
