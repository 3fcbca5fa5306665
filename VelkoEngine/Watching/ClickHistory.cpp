#include "VelkoEngine/Watching/ClickHistory.h"

#include <utility>

#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Ports/Displays.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

/// Whether a point in a menu bar is left of every icon in that bar by more than the width of the leftmost:
/// that much room is left for one that is not known yet. A bar without icons says nothing.
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

/// The system waits for this, and switches the tap off when it takes long.
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

/// Finds out whose icon it was, if it may be an icon's at all.
void ClickHistory::press(Point at) {
    const auto displays = platform_.displays.displays();
    const double thickness = platform_.displays.statusBarThickness();
    if (!MenuBarStrip::contains(displays, thickness, at)) {
        return;
    }
    KnownBar bar = look_();
    // The window list does not tell that the broom is ours, and nobody may ask for it on another thread.
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
        const auto onClick = onClick_;  // it may destroy this
        onClick(*bundleID);
    }
}

}  // namespace velko
