#include "Simulator/MenuBar/SimulatedBroom.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"

namespace velko {

namespace {

constexpr std::size_t broomIcon = 0;  ///< the first of Velko's icons

bool hasNotch(const Display& display) {
    return MenuBarStrip::housing(display).has_value();
}

const SimulatedMenuBar::Slot* slotOfBroom(const SimulatedMac& mac) {
    return mac.menuBar().find(mac.processes.ownPID(), broomIcon);
}

}  // namespace

SimulatedBroom::SimulatedBroom(SimulatedMac& mac, MachineThread& thread, std::function<void()> changed)
    : mac_(mac), thread_(thread), changed_(std::move(changed)) {}

bool SimulatedBroom::click(const SimulatedClick& click) {
    const auto* slot = slotOfBroom(mac_);
    const auto screens = mac_.displays.displays();
    if (slot == nullptr || !slot->isVisible || !isInSight() || screens.empty()) {
        return false;
    }
    const Point at{.x = slot->frame.x + slot->frame.width / 2, .y = slot->frame.y + slot->frame.height / 2};
    mac_.activity.lookedAt();
    mac_.pointer.press(at, click.isRight, click.option);
    mac_.closeMenu();
    mac_.surfaces.clickOutside({.x = at.x, .y = screens.front().frame.maxY() - at.y});
    if (mac_.statusItem.isMenuOpen()) {
        mac_.statusItem.closeMenu();
        mac_.pointer.release();
        return true;
    }
    thread_.happen(click.held + clickTime, [this, click] {
        mac_.pointer.release();
        mac_.statusItem.click(click);
    });
    return true;
}

void SimulatedBroom::put(BroomSpot spot) {
    const bool isPossible =
        spot != BroomSpot::notch || std::ranges::any_of(mac_.displays.displays(), hasNotch);
    spot_ = isPossible ? spot : BroomSpot::bar;
    settling_.reset();
    changed_();
}

bool SimulatedBroom::isInSight() const noexcept {
    return spot_ == BroomSpot::bar || spot_ == BroomSpot::stub;
}

void SimulatedBroom::settle(BroomSpot meanwhile, std::chrono::milliseconds duration) {
    settling_ = meanwhile;
    settledAt_ = thread_.now() + duration;
    thread_.happen(duration, [this] {
        if (settling_ && thread_.now() >= settledAt_) {
            settling_.reset();
            changed_();
        }
    });
}

void SimulatedBroom::writeFrame() const {
    const auto* slot = slotOfBroom(mac_);
    const auto screens = mac_.displays.displays();
    if (slot == nullptr || spot() == BroomSpot::bar || screens.empty()) {
        return;
    }
    const double bottom = screens.front().frame.maxY();
    Rect told{.x = -1, .y = 0, .width = slot->frame.width, .height = slot->frame.height};
    if (spot() == BroomSpot::stub) {
        told = {.x = 0, .y = bottom, .width = 0, .height = 0};
    } else if (spot() == BroomSpot::notch) {
        const auto notched = std::ranges::find_if(screens, hasNotch);
        if (notched == screens.end()) {
            return;
        }
        const Rect housing = *MenuBarStrip::housing(*notched);
        told.x = housing.x + (housing.width - told.width) / 2;
        told.y = bottom - housing.maxY();
    }
    const auto lock = mac_.accessibility.hold();
    slot->element->attributes["AXPosition"] = Point{.x = told.x, .y = told.y};
    slot->element->attributes["AXSize"] = Size{.width = told.width, .height = told.height};
}

}  // namespace velko
