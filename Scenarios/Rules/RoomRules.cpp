#include "Scenarios/Rules/RoomRules.h"

#include <algorithm>
#include <map>
#include <utility>

#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Velko/App/AppController.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"

namespace velko::scenarios {

namespace {

/// How much the user has brought out.
int reachOf(const RevealState& state) {
    if (const auto* const peek = state.asPeeking()) {
        return reachOf(peek->base);
    }
    return !state.isRevealed() ? 0 : state == RevealState::revealed() ? 1 : 2;
}

}  // namespace

std::optional<std::string> RoomRules::check(const AppController& velko, bool isCalm) {
    const auto swallowed = iconUnderNotch(velko);
    before_ = {.reach = reachOf(velko.values().state),
               .isKnown = knowsAll(velko),
               .displays = world_.mac().displays.displays()};
    if (swallowed) {
        return "no reveal leaves an icon under the notch: " + *swallowed;
    }
    if (isCalm && !isWideAsTold(velko)) {
        return "nothing is hidden where the user wants to see everything, and nowhere else";
    }
    return std::nullopt;
}

bool RoomRules::knowsAll(const AppController& velko) const {
    const SimulatedMac& mac = world_.mac();
    std::map<BundleID, double> widths;
    for (const auto& slot : mac.menuBar().slots()) {
        if (slot.pid != mac.processes.ownPID()) {
            widths[slot.bundleID] += slot.icon.width;
        }
    }
    return mac.broomSpot() == BroomSpot::bar && widths == velko.values().iconWidths;
}

/// An icon that the shelf would have shown: it came out in the bar, although Velko knew that it has no room.
std::optional<std::string> RoomRules::iconUnderNotch(const AppController& velko) const {
    const SimulatedMac& mac = world_.mac();
    const AppValues& values = velko.values();
    const auto displays = mac.displays.displays();
    const bool isReveal = reachOf(values.state) > before_.reach && before_.isKnown && knowsAll(velko) &&
                          displays == before_.displays && values.state.asPeeking() == nullptr;
    const bool isInBar = values.activeStyle == RevealStyle::inline_ && values.layout.shelfWhenFull &&
                         values.health().isOk() && !values.isEverythingOut() && !values.showingMe;
    if (!isReveal || !isInBar || mac.framework.unanswered() > 0 || displays.empty() ||
        !MenuBarStrip::housing(displays.front())) {
        return std::nullopt;
    }
    const auto& slots = mac.menuBar().slots();
    const bool isAnyBroughtOut = std::ranges::any_of(slots, [&](const auto& slot) {
        return slot.pid != mac.processes.ownPID() && !slot.icon.systemItem &&
               values.layout.section(slot.bundleID) != Section::bar && slot.isVisible;
    });
    const auto swallowed = std::ranges::find_if(slots, [](const auto& slot) { return slot.isSwallowed; });
    return isAnyBroughtOut && swallowed != slots.end() ? std::optional(swallowed->bundleID) : std::nullopt;
}

bool RoomRules::isWideAsTold(const AppController& velko) const {
    const SimulatedMac& mac = world_.mac();
    const auto displays = mac.displays.displays();
    const auto& least = velko.values().layout.showAllFromWidth;
    if (mac.broomSpot() != BroomSpot::bar || displays.empty() || velko.values().problems.trustMissing) {
        return true;  // Velko can't know
    }
    const bool isWide = least && displays.front().frame.width >= static_cast<double>(*least);
    return velko.values().isOnWideDisplay == isWide;
}

}  // namespace velko::scenarios
