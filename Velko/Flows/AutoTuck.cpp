#include "Velko/Flows/AutoTuck.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <utility>
#include <vector>

#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/Pointer.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

namespace {

/// The processes whose icons the reveal has brought out into the bar.
std::set<ProcessID> broughtOut(const AppValues& values) {
    std::set<ProcessID> pids;
    for (const MenuBarItem& item : values.items) {
        const Section section = values.layout.section(item.bundleID);
        if (section == Section::tucked ||
            (section == Section::buried && values.state == RevealState::revealedWithBuried())) {
            pids.insert(item.pid);
        }
    }
    return pids;
}

/// Whether a pointer in a menu bar (y grows upwards) is on one of those icons (y grows downwards). At the
/// screen's edge it is above their frames.
bool isOnOne(const std::vector<Rect>& icons, const std::vector<Display>& displays, Point pointer) {
    const Display* const display = MenuBarStrip::displayUnder(displays, pointer);
    return std::ranges::any_of(icons, [&](const Rect& icon) {
        const Point middle{.x = icon.x + icon.width / 2,
                           .y = displays.front().frame.maxY() - (icon.y + icon.height / 2)};
        return pointer.x >= icon.x && pointer.x < icon.maxX() &&
               MenuBarStrip::displayUnder(displays, middle) == display;
    });
}

}  // namespace

AutoTuck::AutoTuck(const FlowHost& host, const Platform& platform, const Surface& shelf,
                   std::function<void()> tuck)
    : host_(host), platform_(platform), shelf_(shelf), tuck_(std::move(tuck)) {}

void AutoTuck::rearm() {
    wait_.cancel();
    heldSince_.reset();
    const AppValues& values = host_.values();
    const std::chrono::seconds delay(values.layout.reveal.autoTuckSeconds);
    const bool tucksItself =
        values.state == RevealState::revealed() || values.state == RevealState::revealedWithBuried();
    if (tucksItself && !values.isShelfPinned && delay > std::chrono::seconds::zero()) {
        touchedAt_ = platform_.mainThread.now();
        lookAgain(delay);
    }
}

void AutoTuck::touched() {
    touchedAt_ = platform_.mainThread.now();
    heldSince_.reset();
}

void AutoTuck::lookAgain(MainThread::Uptime delay) {
    wait_ = Awaited::after(platform_, "tucking", delay, [this] { look(); });
}

void AutoTuck::look() {
    if (shelf_.isInHand()) {
        touched();
        lookAgain(Timing::autoTuckRetry);
        return;
    }
    const std::chrono::seconds delay(host_.values().layout.reveal.autoTuckSeconds);
    if (const auto left = touchedAt_ + delay - platform_.mainThread.now(); left.count() > 0) {
        lookAgain(left);
    } else if (isAnyMenuOpen(platform_)) {
        lookAgain(Timing::autoTuckRetry);
    } else {
        lookAtPointer();
    }
}

/// The time has come, unless the pointer is on what would go.
void AutoTuck::lookAtPointer() {
    const Point pointer = platform_.pointer.location();
    const auto shelf = shelf_.frame();
    const bool isOnShelf = shelf && shelf->contains(pointer);
    if (!mayHold(pointer, isOnShelf)) {
        tuck_();
        return;
    }
    if (isOnShelf) {
        lookAgain(Timing::autoTuckRetry);
        return;
    }
    auto displays = platform_.displays.displays();
    if (host_.values().isShelfShown() ||
        !MenuBarStrip::holds(displays, platform_.displays.statusBarThickness(), pointer)) {
        tuck_();
        return;
    }
    const auto decide = [this, displays = std::move(displays), pointer](const std::vector<Rect>& icons) {
        if (isOnOne(icons, displays, pointer)) {
            lookAgain(Timing::autoTuckRetry);
        } else {
            tuck_();
        }
    };
    wait_ = Inventory::frames(platform_, broughtOut(host_.values()), decide);
}

/// On the shelf the pointer puts it off for as long as it moves, and everywhere only for so long at rest.
bool AutoTuck::mayHold(Point pointer, bool isOnShelf) {
    const auto now = platform_.mainThread.now();
    const bool hasMoved = std::exchange(pointer_, pointer) != pointer;
    if (!heldSince_ || (isOnShelf && hasMoved)) {
        heldSince_ = now;
    }
    return now - *heldSince_ < Timing::autoTuckHold;
}

}  // namespace velko
