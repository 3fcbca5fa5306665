#include "VelkoEngine/Background/OthersWalk.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/MenuBar/MenuBarHost.h"
#include "VelkoEngine/Ports/Accessibility.h"

namespace velko::Inventory {

namespace {

/// Elements at this depth are still looked at, those below are not: the host's windows can be large.
constexpr int deepestWalk = 4;

/// Whether an element of the host's menu-bar window stands for an item, and then whose.
std::optional<ProcessID> ownerOfItem(const Accessibility& accessibility, const Walked& walked,
                                     ProcessID hostPID) {
    if (walked.element == nullptr) {
        return walked.pid;
    }
    const auto role = AX::string(accessibility, *walked.element, "AXRole");
    if (role == "AXApplication" || role == "AXMenuBarItem") {
        return walked.pid.value_or(hostPID);
    }
    return role == "AXButton" && walked.pid != hostPID ? walked.pid : std::nullopt;
}

}  // namespace

std::set<ProcessID> visiblePIDs(const Platform& platform) {
    const auto hostPID = menuBarHostPID(platform);
    if (!hostPID) {
        return {};
    }
    const Accessibility& accessibility = platform.accessibility;
    std::set<ProcessID> found;
    bool hasWindow = false;
    walkOthers(platform, AX::application(accessibility, *hostPID), 0, [&](const Walked& walked) {
        if (walked.depth == 0) {
            return true;
        }
        if (walked.depth == 1) {
            const bool isWindow = !hasWindow && walked.element != nullptr &&
                                  AX::string(accessibility, *walked.element, "AXRole") == "AXWindow";
            hasWindow = hasWindow || isWindow;
            return isWindow;
        }
        const auto owner = ownerOfItem(accessibility, walked, *hostPID);
        if (owner) {
            found.insert(*owner);
        }
        return !owner && walked.depth < deepestWalk;
    });
    return found;
}

}  // namespace velko::Inventory
