#include <algorithm>
#include <string>

#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/Windows.h"

namespace velko::Contracts {

void checkWindows(const Windows& windows, Checks& checks) {
    const auto onScreen = windows.onScreen();
    expect(checks, "windows: the windows on screen can be read and have a level, an owner and a place",
           onScreen && std::ranges::any_of(*onScreen,
                                           [](const WindowInfo& window) {
                                               return window.layer && window.ownerPID &&
                                                      *window.ownerPID > 0 && window.frame &&
                                                      window.frame->width > 0;
                                           }),
           onScreen ? std::to_string(onScreen->size()) + " windows" : "no list");
    const auto level = windows.popUpMenuLevel();
    expect(checks, "windows: pop-up menus lie above ordinary windows", level > 0, std::to_string(level));
}

}  // namespace velko::Contracts
