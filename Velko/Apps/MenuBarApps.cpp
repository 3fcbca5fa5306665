#include "Velko/Apps/MenuBarApps.h"

#include <algorithm>
#include <string_view>

#include "Velko/App/AppController.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Ports/Workspace.h"

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

HiddenApps hiddenApps(const AppController& controller) {
    HiddenApps hidden;
    for (const PresentApp& app : presentApps(controller.values())) {
        const Section section = controller.values().layout.section(app.bundleID);
        if (section != Section::bar && canBePlaced(controller, app.bundleID)) {
            (section == Section::tucked ? hidden.tucked : hidden.buried).push_back(app);
        }
    }
    return hidden;
}

std::string placingTitle(Section section) {
    switch (section) {
        case Section::bar: return "Keep in the Bar";
        case Section::tucked: return "Tuck";
        case Section::buried: break;
    }
    return "Bury";
}

std::string inSentence(const std::string& name) {
    const bool isPlain =
        std::ranges::all_of(name, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return isPlain ? name : "\u2068" + name + "\u2069";
}

std::string describe(const FailedOpening& failed, const AppNames& names) {
    const std::string name = inSentence(names.of(failed.bundleID));
    return failed.isRunning ? name + " isn't answering, so its menu stays closed. Try again in a moment."
                            : name + " isn't running any more.";
}

std::optional<std::string> whyKeptIn(const AppController& controller, const BundleID& bundleID,
                                     const Workspace& workspace) {
    const AppValues& values = controller.values();
    if (!values.isPresenting() || !controller.engine().current().hides(bundleID)) {
        return std::nullopt;
    }
    return inSentence(AppNames(values, workspace).of(bundleID)) + " stays hidden while you are presenting.";
}

std::string appsInWords(std::size_t count) {
    return count == 1 ? "1 app" : std::to_string(count) + " apps";
}

std::string whyNoApps(const AppValues& values) {
    if (values.problems.engineUnavailable) {
        return "Velko can't look at your menu bar: this macOS build isn't supported.";
    }
    if (values.problems.trustMissing) {
        return "Velko can't look at your menu bar until you give it permission.";
    }
    if (!values.inventoryLoaded) {
        return "Looking at your menu bar…";
    }
    return "No app has an icon in your menu bar right now. When one moves in, it shows up here.";
}

AppNames::AppNames(const AppValues& values, const Workspace& workspace)
    : values_(values), workspace_(workspace) {
    for (const RunningApplication& app : workspace.runningApplications()) {
        if (app.bundleID) {
            auto& name = running_[*app.bundleID];
            name = name ? name : app.localizedName;
        }
    }
}

std::string AppNames::of(const BundleID& bundleID) const {
    const auto item = std::ranges::find(values_.items, bundleID, &MenuBarItem::bundleID);
    if (item != values_.items.end()) {
        return item->appName;
    }
    const auto running = running_.find(bundleID);
    const auto runningName = running == running_.end() ? std::nullopt : running->second;
    if (runningName) {
        return *runningName;
    }
    constexpr std::string_view extension = ".app";
    std::string name = workspace_.installedName(bundleID).value_or("");
    if (name.ends_with(extension)) {
        name.resize(name.size() - extension.size());
    }
    return name.empty() ? bundleID : name;
}

}  // namespace velko
