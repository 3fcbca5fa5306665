#include "VelkoEngine/Watching/ClickOwner.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/MenuBarHost.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Windows.h"

namespace velko {

namespace {

/// Whether the window in front at a point is this process's own.
bool isOwnWindow(const Platform& platform, Point point) {
    const auto windows = platform.windows.onScreen();
    if (!windows) {
        return false;
    }
    const auto front = std::ranges::find_if(
        *windows, [&](const WindowInfo& window) { return window.frame && window.frame->contains(point); });
    return front != windows->end() && front->ownerPID == platform.processes.ownPID();
}

bool hasIconAt(const Accessibility& accessibility, ProcessID pid, Point point) {
    return std::ranges::any_of(AX::statusItems(accessibility, pid), [&](const AXElement& icon) {
        const auto frame = AX::frame(accessibility, icon);
        return frame && frame->contains(point);
    });
}

/// The app that has an icon at the click. Icons move whenever others come and go, so each app is asked
/// where its own are now; the one that was nearest first, since that is mostly it.
std::optional<ProcessID> ownerByFrame(const Accessibility& accessibility, const MenuBarClick& click) {
    std::vector<std::pair<double, ProcessID>> nearest;
    nearest.reserve(click.shown.size());
    for (const KnownIcon& icon : click.shown) {
        nearest.emplace_back(std::abs(icon.frame.x + icon.frame.width / 2 - click.at.x), icon.pid);
    }
    std::ranges::sort(nearest);
    std::set<ProcessID> asked;
    for (const auto& [distance, pid] : nearest) {
        if (asked.insert(pid).second && hasIconAt(accessibility, pid, click.at)) {
            return pid;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<ProcessID> ownerOf(const Platform& platform, const MenuBarClick& click) {
    // The system would ask this process amid the call, on this thread, and its windows belong to the main
    // one.
    if (isOwnWindow(platform, click.at)) {
        return platform.processes.ownPID();
    }
    const Accessibility& accessibility = platform.accessibility;
    const auto element = accessibility.elementAt(click.at, Timing::axMessagingTimeout);
    const auto pid = element ? accessibility.pid(*element) : std::unexpected(element.error());
    if (!pid) {
        return std::nullopt;
    }
    // Since macOS 27 the bar's host draws everybody's icons, and may answer for them.
    const auto owner = *pid == menuBarHostPID(platform) ? ownerByFrame(accessibility, click) : std::nullopt;
    return owner ? owner : *pid;
}

}  // namespace velko
