#include <string>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Broom/StatusMenus.h"
#include "Velko/Flows/Presenting.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Ports/Desktop.h"
#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/NumberText.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/InventoryDump.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

constexpr const char* textEditor = "/System/Applications/TextEdit.app";
constexpr const char* noSamples = "no samples yet";

std::string usageLines(const AppValues& values) {
    std::string lines;
    for (const PresentApp& app : presentApps(values)) {
        const auto usage = values.usage.find(app.bundleID);
        lines += (lines.empty() ? "  " : "\n  ") + app.name + " | ";
        if (usage == values.usage.end()) {
            lines += noSamples;
        } else {
            lines += describe(usage->second) + (AppHealth::isHeavy(usage->second) ? " | HEAVY" : "");
        }
    }
    return lines.empty() ? noSamples : lines;
}

std::string itemLine(const MenuBarItem& item, const Layout& layout) {
    return "  " + item.appName + " | " + item.bundleID + " | pid " + std::to_string(item.pid) + " | \"" +
           item.title + "\" | x=" + wholeText(item.frame.x) + " | " +
           std::string(name(layout.section(item.bundleID)));
}

}  // namespace

void MenuActions::openApp(const BundleID& bundleID) {
    parts_.controller.open(bundleID);
}

void MenuActions::openAccessibility() const {
    AX::openAccessibilitySettings(parts_.platform);
}

void MenuActions::openMenuBarSettings() const {
    parts_.platform.workspace.openURL("x-apple.systempreferences:com.apple.MenuBarSettings");
}

void MenuActions::showNoteFromMenu() const {
    parts_.host.onNote();
}

void MenuActions::openSettings() const {
    parts_.host.onSettings();
}

void MenuActions::openSearch() const {
    parts_.host.onSearch({});
}

void MenuActions::togglePresenting() {
    parts_.controller.presenting().toggle();
}

void MenuActions::checkForUpdates() {
    updates_.checkForUpdates();
}

void MenuActions::quit() {
    parts_.ports.application.terminate();
}

void MenuActions::editLayout() {
    parts_.ports.application.openFile(parts_.controller.layoutFile(), textEditor);
}

void MenuActions::reloadLayout() {
    parts_.controller.loadLayout();
}

void MenuActions::showAll() {
    parts_.controller.showAll();
}

void MenuActions::toggleIconWatch() {
    parts_.controller.toggleIconWatch();
}

void MenuActions::copyLog() {
    parts_.ports.pasteboard.setText(parts_.log.text());
}

void MenuActions::openLog() {
    parts_.ports.application.openFile(parts_.log.file(), {});
}

void MenuActions::logAllowlist() {
    parts_.log.log("debug", "plan: " + describe(parts_.controller.engine().current()));
}

void MenuActions::logProbe() {
    parts_.log.log("debug", "engine probe:\n" + engineProbeReport(parts_.platform));
}

void MenuActions::logUsage() {
    const AppValues& values = parts_.controller.values();
    const auto since = values.layout.autopilot.watchingSince;
    parts_.log.log("debug", "app health:\n" + usageLines(values));
    parts_.log.log(
        "debug", "autopilot: watching since " + (since ? formatDate(*since) : "never") +
                     ", suggestions: " + std::to_string(parts_.controller.autopilot().suggestions().size()));
}

void MenuActions::dumpInventory() {
    const AppValues& values = parts_.controller.values();
    parts_.log.log("debug", "inventory: " + std::to_string(values.items.size()) + " items");
    for (const MenuBarItem& item : values.items) {
        parts_.log.log("debug", itemLine(item, values.layout));
    }
    hostDump_ = parts_.platform.mainThread.background(
        [platform = parts_.platform] { return Inventory::menuBarAgentDump(platform); },
        [this](const std::string& tree) { parts_.log.log("debug", "MenuBarAgent tree:\n" + tree); });
}

}  // namespace velko
