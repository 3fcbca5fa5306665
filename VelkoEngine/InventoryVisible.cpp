#include <algorithm>

#include "VelkoEngine/AX.h"
#include "VelkoEngine/Inventory.h"
#include "VelkoEngine/MenuBarHost.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Processes.h"

namespace velko::Inventory {

namespace {

/// Elements at this depth are still looked at, those below are not: the host's windows can be large.
constexpr int deepestWalk = 4;

/// Collects the processes behind the items in the host's menu-bar window.
class HostWalk final {
 public:
    HostWalk(const Platform& platform, ProcessID hostPID)
        : accessibility_(platform.accessibility), ownPID_(platform.processes.ownPID()), hostPID_(hostPID) {}

    void visit(const AXElement& element, int depth) {
        if (accessibility_.pid(element) == ownPID_) {
            // Whatever is asked of our own elements is answered on this thread, and they belong to another.
            found_.insert(ownPID_);
            return;
        }
        const auto role = AX::string(accessibility_, element, "AXRole");
        if (role == "AXApplication" || role == "AXMenuBarItem") {
            found_.insert(accessibility_.pid(element).value_or(hostPID_));
            return;
        }
        if (role == "AXButton") {
            const auto pid = accessibility_.pid(element);
            if (pid && *pid != hostPID_) {
                found_.insert(*pid);
                return;
            }
        }
        if (depth < deepestWalk) {
            for (const AXElement& child : AX::children(accessibility_, element)) {
                visit(child, depth + 1);
            }
        }
    }

    [[nodiscard]] const std::set<ProcessID>& found() const noexcept { return found_; }

 private:
    const Accessibility& accessibility_;
    ProcessID ownPID_;
    ProcessID hostPID_;
    std::set<ProcessID> found_;
};

}  // namespace

std::set<ProcessID> visiblePIDs(const Platform& platform) {
    const auto hostPID = menuBarHostPID(platform);
    if (!hostPID) {
        return {};
    }
    const Accessibility& accessibility = platform.accessibility;
    const auto children = AX::children(accessibility, AX::application(accessibility, *hostPID));
    const auto window = std::ranges::find_if(children, [&](const AXElement& child) {
        return AX::string(accessibility, child, "AXRole") == "AXWindow";
    });
    if (window == children.end()) {
        return {};
    }
    HostWalk walk(platform, *hostPID);
    walk.visit(*window, 1);
    return walk.found();
}

}  // namespace velko::Inventory
