#include "Simulator/Desktop/SimulatedScreen.h"

#include <utility>

#include "Simulator/Accessibility/SimulatedAccessibility.h"

namespace velko {

namespace {

constexpr double plainBarHeight = 24;
constexpr double housingHeight = 38;
constexpr double dockHeight = 70;

Rect withoutBarAndDock(const Rect& frame, double barHeight) {
    return {.x = frame.x,
            .y = frame.y + dockHeight,
            .width = frame.width,
            .height = frame.height - dockHeight - barHeight};
}

}  // namespace

Display SimulatedDisplays::notched(Point origin, Size size) {
    const Rect frame{.x = origin.x, .y = origin.y, .width = size.width, .height = size.height};
    const double beside = (frame.width - housingWidth) / 2;
    const double besideHousing = frame.maxY() - housingHeight;
    return {.frame = frame,
            .visibleFrame = withoutBarAndDock(frame, housingHeight),
            .safeAreaTop = housingHeight,
            .auxiliaryTopLeft = {.x = origin.x, .y = besideHousing, .width = beside, .height = housingHeight},
            .auxiliaryTopRight = {
                .x = frame.maxX() - beside, .y = besideHousing, .width = beside, .height = housingHeight}};
}

Display SimulatedDisplays::plain(Point origin, Size size) {
    const Rect frame{.x = origin.x, .y = origin.y, .width = size.width, .height = size.height};
    return {.frame = frame, .visibleFrame = withoutBarAndDock(frame, plainBarHeight)};
}

double SimulatedDisplays::statusBarThickness() const {
    return displays_.empty() || displays_.front().safeAreaTop <= 0 ? plainBarHeight
                                                                   : displays_.front().safeAreaTop;
}

Subscription SimulatedDisplays::observeChanges(std::function<void()> handler) {
    return observers_.observe([handler = std::move(handler)](std::monostate) { handler(); });
}

void SimulatedDisplays::set(std::vector<Display> displays) {
    displays_ = std::move(displays);
    observers_.tell({});
}

std::optional<std::vector<WindowInfo>> SimulatedWindows::onScreen() const {
    std::vector<WindowInfo> windows;
    if (const auto owner = menuOwner()) {
        windows.push_back({.layer = menuLevel, .ownerPID = owner});
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
    const ProcessID owner = menuOwner_.exchange(0);
    if (const auto root = isReal(owner) ? accessibility_.root(owner) : nullptr) {
        accessibility_.notify(root, "AXMenuClosed");
    }
}

std::optional<Rect> SimulatedWindows::frontMenus(double height) const {
    constexpr double appleMenu = 40;  // points
    if (!accessibility_.root(front_)) {
        return std::nullopt;
    }
    return Rect{.x = appleMenu, .width = menus_, .height = height};
}

}  // namespace velko
