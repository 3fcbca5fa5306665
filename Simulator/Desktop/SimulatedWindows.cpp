#include "Simulator/Desktop/SimulatedWindows.h"

#include <utility>

#include "Simulator/Accessibility/SimulatedAccessibility.h"

namespace velko {

std::optional<std::vector<WindowInfo>> SimulatedWindows::onScreen() const {
    std::vector<WindowInfo> windows;
    if (menuOwner_) {
        windows.push_back({.layer = menuLevel, .ownerPID = menuOwner_});
    }
    windows.insert(windows.end(), others.begin(), others.end());
    return windows;
}

void SimulatedWindows::openMenu(ProcessID pid) {
    closeMenu();
    menuOwner_ = pid;
    if (const auto root = accessibility_.root(pid)) {
        accessibility_.notify(root, "AXMenuOpened");
    }
}

void SimulatedWindows::closeMenu() {
    const auto owner = std::exchange(menuOwner_, std::nullopt);
    if (const auto root = owner ? accessibility_.root(*owner) : nullptr) {
        accessibility_.notify(root, "AXMenuClosed");
    }
}

std::optional<Rect> SimulatedWindows::frontMenus(double height) const {
    constexpr double appleMenu = 40;  // points
    constexpr double menus = 300;
    if (!accessibility_.root(front_)) {
        return std::nullopt;
    }
    return Rect{.x = appleMenu, .width = menus, .height = height};
}

}  // namespace velko
