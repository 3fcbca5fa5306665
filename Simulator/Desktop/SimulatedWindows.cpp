#include "Simulator/Desktop/SimulatedWindows.h"

namespace velko {

std::optional<std::vector<WindowInfo>> SimulatedWindows::onScreen() const {
    std::vector<WindowInfo> windows;
    if (menuOwner_) {
        windows.push_back({.layer = menuLevel, .ownerPID = menuOwner_});
    }
    windows.insert(windows.end(), others.begin(), others.end());
    return windows;
}

}  // namespace velko
