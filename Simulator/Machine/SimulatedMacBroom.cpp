#include <algorithm>
#include <utility>

#include "Simulator/Machine/SimulatedMac.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"

// How the system treats Velko's own icon, and Velko.

namespace velko {

namespace {

constexpr std::size_t broomIcon = 0;  ///< the first of Velko's icons
constexpr std::chrono::minutes unseenUntilNap{5};

}  // namespace

bool SimulatedMac::clickBroom(const SimulatedClick& click) {
    const auto* slot = menuBar_.find(processes.ownPID(), broomIcon);
    const auto screens = displays.displays();
    if (slot == nullptr || !slot->isVisible || !isBroomInSight() || screens.empty()) {
        return false;
    }
    const Point at{.x = slot->frame.x + slot->frame.width / 2, .y = slot->frame.y + slot->frame.height / 2};
    lookedAt();
    pointer.press(at, click.isRight, click.option);
    closeMenu();
    surfaces.clickOutside({.x = at.x, .y = screens.front().frame.maxY() - at.y});
    if (statusItem.isMenuOpen()) {
        statusItem.closeMenu();
        pointer.release();
        return true;
    }
    thread_.happen(click.held + clickTime, [this, click] {
        pointer.release();
        statusItem.click(click);
    });
    return true;
}

void SimulatedMac::putBroom(BroomSpot spot) {
    const auto screens = displays.displays();
    const bool hasNotch = std::ranges::any_of(
        screens, [](const Display& each) { return MenuBarStrip::housing(each).has_value(); });
    broomSpot_ = spot == BroomSpot::notch && !hasNotch ? BroomSpot::bar : spot;
    settling_.reset();
    refresh();
}

bool SimulatedMac::isBroomInSight() const {
    return broomSpot_ == BroomSpot::bar || broomSpot_ == BroomSpot::stub;
}

void SimulatedMac::settleBroom(BroomSpot meanwhile, std::chrono::milliseconds duration) {
    settling_ = meanwhile;
    settledAt_ = thread_.now() + duration;
    thread_.happen(duration, [this] {
        if (settling_ && thread_.now() >= settledAt_) {
            settling_.reset();
            refresh();
        }
    });
}

/// What Accessibility says, in place of the truth.
void SimulatedMac::tellWhereBroomIs() {
    auto* slot = menuBar_.find(processes.ownPID(), broomIcon);
    const BroomSpot spot = settling_.value_or(broomSpot_);
    const auto screens = displays.displays();
    if (slot == nullptr || spot == BroomSpot::bar || screens.empty()) {
        return;
    }
    const double bottom = screens.front().frame.maxY();
    Rect told{.x = -1, .y = 0, .width = slot->frame.width, .height = slot->frame.height};
    if (spot == BroomSpot::stub) {
        told = {.x = 0, .y = bottom, .width = 0, .height = 0};
    } else if (spot == BroomSpot::notch) {
        const auto notched = std::ranges::find_if(
            screens, [](const Display& each) { return MenuBarStrip::housing(each).has_value(); });
        if (notched == screens.end()) {
            return;
        }
        const Rect housing = *MenuBarStrip::housing(*notched);
        told.x = housing.x + (housing.width - told.width) / 2;
        told.y = bottom - housing.maxY();
    }
    const auto lock = accessibility.hold();
    slot->element->attributes["AXPosition"] = Point{.x = told.x, .y = told.y};
    slot->element->attributes["AXSize"] = Size{.width = told.width, .height = told.height};
}

void SimulatedMac::nap() {
    mustNap_ = true;
}

bool SimulatedMac::isNapping() const {
    const bool isSeen = surfaces.isAnyOpen() || statusItem.isMenuOpen() || !activity.reasons().empty();
    return !isSeen && (mustNap_ || mainThread.now() - lookedAtAt_ >= unseenUntilNap);
}

void SimulatedMac::lookedAt() {
    mustNap_ = false;
    lookedAtAt_ = thread_.now();
    mainThread.wakeFromNap();
}

}  // namespace velko
