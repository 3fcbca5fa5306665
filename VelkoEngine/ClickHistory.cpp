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

/// Whether a point in a menu bar is left of every icon in that bar by more than the width of the leftmost:
/// that much room is left for one that is not known yet. A bar without icons says nothing.
bool isLeftOfAll(const std::vector<MenuBarItem>& icons, const std::vector<Display>& displays,
                 double statusBarThickness, Point point) {
    const double top = displays.front().frame.maxY();
    const auto displayOf = [&](Point at) {
        return MenuBarStrip::displayUnder(displays, {.x = at.x, .y = top - at.y});
    };
    std::optional<Rect> leftmost;
    for (const MenuBarItem& icon : icons) {
        const Rect& frame = icon.frame;
        const Point middle{.x = frame.x + frame.width / 2, .y = frame.y + frame.height / 2};
        if (MenuBarStrip::shows(displays, statusBarThickness, frame) &&
            displayOf(middle) == displayOf(point) && (!leftmost || frame.x < leftmost->x)) {
            leftmost = frame;
        }
    }
    return leftmost && point.x < leftmost->x - leftmost->width;
}

}  // namespace

ClickHistory::ClickHistory(const Platform& platform, KnownIcons known,
                           std::function<void(const BundleID&)> onClick, PressHandler onPress)
    : platform_(platform),
      known_(std::move(known)),
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
            if (mayHitIcon(event.location)) {
                hitTests_.add(event.location);
            }
            break;
    }
}

bool ClickHistory::mayHitIcon(Point point) const {
    const auto displays = platform_.displays.displays();
    const double thickness = platform_.displays.statusBarThickness();
    return MenuBarStrip::contains(displays, thickness, point) &&
           !isLeftOfAll(known_(), displays, thickness, point);
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
