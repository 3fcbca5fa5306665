#include "VelkoEngine/ClickHistory.h"

#include <algorithm>
#include <utility>

#include "VelkoCore/Timing.h"
#include "VelkoEngine/MenuBarStrip.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Displays.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Windows.h"
#include "VelkoEngine/Ports/Workspace.h"

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

std::optional<ProcessID> ownerAt(const Platform& platform, Point point) {
    // The system would ask this process amid the call, on this thread, and its windows belong to the main
    // one.
    if (isOwnWindow(platform, point)) {
        return platform.processes.ownPID();
    }
    const Accessibility& accessibility = platform.accessibility;
    const auto element = accessibility.elementAt(point, Timing::axMessagingTimeout);
    if (!element) {
        return std::nullopt;
    }
    const auto pid = accessibility.pid(*element);
    return pid ? std::optional(*pid) : std::nullopt;
}

}  // namespace

ClickHistory::ClickHistory(const Platform& platform, std::function<void(const BundleID&)> onClick,
                           PressHandler onPress)
    : platform_(platform),
      onClick_(std::move(onClick)),
      onPress_(std::move(onPress)),
      hitTests_(
          platform.mainThread, mostWaiting, [platform](Point point) { return ownerAt(platform, point); },
          [this](std::optional<ProcessID> pid) { report(pid); }) {}

void ClickHistory::start() {
    if (!tap_) {
        tap_ = platform_.pointer.tapClicks([this](const ClickTapEvent& event) { hear(event); });
    }
}

void ClickHistory::stop() {
    tap_.reset();
    hitTests_.clear();
}

/// The system waits for this, and switches the tap off when it takes long.
void ClickHistory::hear(const ClickTapEvent& event) {
    switch (event.kind) {
        case ClickTapEvent::Kind::disabled: tap_->enable(); break;
        case ClickTapEvent::Kind::mouseDown:
            if (onPress_) {
                onPress_(event);
            }
            if (MenuBarStrip::contains(platform_.displays.displays(), platform_.displays.statusBarThickness(),
                                       event.location)) {
                hitTests_.add(event.location);
            }
            break;
    }
}

void ClickHistory::report(std::optional<ProcessID> pid) const {
    if (!pid || !isReal(*pid) || *pid == platform_.processes.ownPID()) {
        return;
    }
    const auto bundleID = platform_.workspace.bundleID(*pid);
    if (bundleID && *bundleID != "com.apple.MenuBarAgent") {
        const auto onClick = onClick_;  // it may destroy this
        onClick(*bundleID);
    }
}

}  // namespace velko
