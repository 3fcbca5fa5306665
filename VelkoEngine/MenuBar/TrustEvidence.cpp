#include "VelkoEngine/MenuBar/TrustEvidence.h"

#include <cstddef>

#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/MenuBar/MenuBarHost.h"
#include "VelkoEngine/Ports/Accessibility.h"

namespace velko::TrustEvidence {

namespace {

constexpr std::size_t mostWitnesses = 3;

}  // namespace

std::vector<ProcessID> witnesses(const Platform& platform) {
    std::vector<ProcessID> pids;
    if (const auto host = menuBarHostPID(platform)) {
        pids.push_back(*host);
    }
    for (const Inventory::AppRef& app : Inventory::runningApps(platform)) {
        if (pids.size() == mostWitnesses) {
            break;
        }
        if (pids.empty() || app.pid != pids.front()) {
            pids.push_back(app.pid);
        }
    }
    return pids;
}

std::optional<bool> ask(const Platform& platform, const std::vector<ProcessID>& witnesses) {
    const Accessibility& accessibility = platform.accessibility;
    for (const ProcessID pid : witnesses) {
        const auto role = accessibility.attribute(AX::application(accessibility, pid), "AXRole");
        if (AX::isHeard(role)) {
            return true;
        }
        if (role.error() == AXError::apiDisabled) {
            return false;
        }
    }
    return std::nullopt;
}

}  // namespace velko::TrustEvidence
