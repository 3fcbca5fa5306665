#include <ranges>
#include <utility>

#include "Simulator/Machine/SimulatedMac.h"

// What a person sees of the machine.

namespace velko {

namespace {

constexpr std::size_t pictureColumns = 108;

}  // namespace

std::vector<BundleID> SimulatedMac::visibleIcons() const {
    std::vector<BundleID> owners;
    for (const auto& slot : menuBar_.slots() | std::views::reverse) {
        if (slot.isVisible && !slot.icon.systemItem) {
            owners.push_back(slot.bundleID);
        }
    }
    return owners;
}

std::vector<std::string> SimulatedMac::visibleSystemItems() const {
    std::vector<std::string> titles;
    for (const auto& slot : menuBar_.slots() | std::views::reverse) {
        if (slot.isVisible && slot.icon.systemItem) {
            titles.push_back(slot.icon.title.value_or(""));
        }
    }
    return titles;
}

std::string SimulatedMac::menuBarPicture() const {
    std::string picture = menuBar_.picture(thread_.date(), processes.ownPID(), pictureColumns);
    if (const auto owner = windows.menuOwner()) {
        picture += "\n" + processes.name(*owner).value_or("?") + " has its menu open";
    }
    return picture;
}

std::optional<Rect> SimulatedMac::frontMenus() const {
    constexpr double appleMenu = 40;  // points
    constexpr double menus = 300;
    if (!accessibility.root(front_)) {
        return std::nullopt;
    }
    return Rect{.x = appleMenu, .width = menus, .height = displays.statusBarThickness()};
}

/// Brings everything that follows from processes, icons, displays and the allowlist up to date.
void SimulatedMac::refresh() {
    if (const auto screens = displays.displays(); !screens.empty()) {
        barWidth_ = screens.front().frame.width;
    }
    menuBar_.layOut(framework.inForce(), barWidth_, displays.statusBarThickness());
    trees_.write(processes, menuBar_, menuBarHost());
    tellWhereBroomIs();
    std::vector<Sight> sight;
    SimulatedAccessibility::OnScreen onScreen;
    for (const auto& slot : menuBar_.slots()) {
        if (slot.isVisible && (slot.pid != processes.ownPID() || isBroomInSight())) {
            sight.push_back({.pid = slot.pid, .title = slot.icon.title, .frame = slot.frame});
            const auto host = hitsEndAtHost_ ? trees_.hostWindow() : nullptr;
            onScreen.emplace_back(slot.frame, host ? host : slot.element);
        }
    }
    if (const auto menus = frontMenus()) {
        onScreen.emplace_back(*menus, accessibility.root(front_));
    }
    accessibility.setOnScreen(std::move(onScreen));
    if (std::exchange(sight_, sight) != sight && onMenuBarChange) {
        onMenuBarChange();
    }
}

}  // namespace velko
