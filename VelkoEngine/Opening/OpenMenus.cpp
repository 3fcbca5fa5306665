#include "VelkoEngine/Opening/OpenMenus.h"

#include <algorithm>

#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Windows.h"

namespace velko {

bool isAnyMenuOpen(const Platform& platform) {
    const auto windows = platform.windows.onScreen();
    if (!windows) {
        return false;
    }
    const auto menuLevel = platform.windows.popUpMenuLevel();
    const ProcessID ownPID = platform.processes.ownPID();
    return std::ranges::any_of(*windows, [&](const WindowInfo& window) {
        return window.layer == menuLevel && window.ownerPID != ownPID;
    });
}

}  // namespace velko
