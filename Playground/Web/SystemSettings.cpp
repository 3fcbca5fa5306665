#include "Playground/Web/SystemSettings.h"

#include <utility>
#include <vector>

namespace velko::web {

namespace {

constexpr Rect place{.x = 500, .y = 260, .width = 715, .height = 560};

}  // namespace

void SystemSettings::look(SimulatedMac& mac) {
    const auto& addresses = mac.workspace.openedURLs();
    for (; addressesSeen_ < addresses.size(); ++addressesSeen_) {
        if (addresses[addressesSeen_].starts_with("x-apple.systempreferences:")) {
            open(mac);
        }
    }
}

void SystemSettings::open(SimulatedMac& mac) {
    if (isOpen()) {
        return;
    }
    pid_ = mac.launch({.bundleID = "com.apple.systempreferences", .name = "System Settings"});
    mac.windows.others.insert(mac.windows.others.begin(), {.layer = 0, .ownerPID = pid_, .frame = place});
}

void SystemSettings::close(SimulatedMac& mac) {
    if (const auto pid = std::exchange(pid_, std::nullopt)) {
        std::erase_if(mac.windows.others, [pid](const WindowInfo& window) { return window.ownerPID == pid; });
        mac.quit(*pid);
    }
}

}  // namespace velko::web
