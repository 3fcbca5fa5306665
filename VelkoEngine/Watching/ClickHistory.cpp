#include "VelkoEngine/Watching/ClickHistory.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Screen.h"
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

bool hasIconAt(const Accessibility& accessibility, ProcessID pid, Point point) {
    return std::ranges::any_of(AX::statusItems(accessibility, pid), [&](const AXElement& icon) {
        const auto frame = AX::frame(accessibility, icon);
        return frame && frame->contains(point);
    });
}

/// The app that has an icon under the click. Icons move when others come and go, so each app is asked where
/// its icons are now. The app that was nearest is asked first, because it is usually the one.
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
    // The system would ask this process within the call and on this thread, but its windows belong to the
    // main thread.
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
    const auto owner =
        *pid == AX::menuBarHostPID(platform) ? ownerByFrame(accessibility, click) : std::nullopt;
    return owner ? owner : *pid;
}

namespace {

/// Whether a point in a menu bar is left of every known icon in that bar by more than the leftmost icon's
/// width. That room is left for an icon that is not known yet. Where no icon is known, the answer is no.
bool isLeftOfAll(const std::vector<KnownIcon>& icons, const std::vector<Display>& displays,
                 double statusBarThickness, Point point) {
    const double top = displays.front().frame.maxY();
    const auto displayOf = [&](Point at) {
        return MenuBarStrip::displayUnder(displays, {.x = at.x, .y = top - at.y});
    };
    std::optional<Rect> leftmost;
    for (const KnownIcon& icon : icons) {
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

ClickHistory::ClickHistory(const Platform& platform, std::function<KnownBar()> look,
                           std::function<void(const BundleID&)> onClick, PressHandler onPress)
    : platform_(platform),
      look_(std::move(look)),
      onClick_(std::move(onClick)),
      onPress_(std::move(onPress)),
      hitTests_(
          platform.mainThread, mostWaiting,
          [platform](const MenuBarClick& click) { return ownerOf(platform, click); },
          [this](std::optional<ProcessID> pid) { report(pid); }) {}

void ClickHistory::start() {
    if (!isRunning()) {
        tap_.reset();
        tap_ = platform_.pointer.tapClicks([this](const ClickTapEvent& event) { hear(event); });
    }
}

void ClickHistory::stop() {
    tap_.reset();
    hitTests_.clear();
}

/// The system waits until this returns, and switches the tap off when it takes long.
void ClickHistory::hear(const ClickTapEvent& event) {
    switch (event.kind) {
        case ClickTapEvent::Kind::disabled: tap_->enable(); break;
        case ClickTapEvent::Kind::mouseDown:
            if (onPress_) {
                onPress_(event);
            }
            press(event.location);
            break;
    }
}

/// Asks for the owner of the icon, if the press may be on an icon.
void ClickHistory::press(Point at) {
    const auto displays = platform_.displays.displays();
    const double thickness = platform_.displays.statusBarThickness();
    if (!MenuBarStrip::contains(displays, thickness, at)) {
        return;
    }
    KnownBar bar = look_();
    // The window list does not show that the broom is ours, and another thread must not ask for it.
    const bool mayBeOwn = !bar.broom || bar.broom->contains(at);
    if (mayBeOwn || isLeftOfAll(bar.icons, displays, thickness, at)) {
        return;
    }
    std::erase_if(bar.icons, [](const KnownIcon& icon) { return !icon.shows; });
    hitTests_.add({.at = at, .shown = std::move(bar.icons)});
}

void ClickHistory::report(std::optional<ProcessID> pid) const {
    if (!pid || !isReal(*pid) || *pid == platform_.processes.ownPID()) {
        return;
    }
    const auto bundleID = platform_.workspace.bundleID(*pid);
    if (bundleID && *bundleID != "com.apple.MenuBarAgent") {
        const auto onClick = onClick_;  // it may destroy this object
        onClick(*bundleID);
    }
}

}  // namespace velko
