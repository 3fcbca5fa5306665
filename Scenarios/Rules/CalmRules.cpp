#include <algorithm>
#include <ranges>
#include <utility>

#include "Scenarios/Rules/Invariants.h"
#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

// What must be true after a time in which nothing happened.

namespace velko::scenarios {

namespace {

using script::Verb;

/// How often a calm Velko may wake the machine: for its loops, which look at each app, and sometimes for a
/// short animation. An animation that never ends would wake it thirty times a second.
constexpr std::uint64_t mostWakeUpsPerMinute = 240;
constexpr std::uint64_t mostWakeUpsPerMinuteAndApp = 20;
constexpr std::uint64_t wakeUpsToSpare = 600;

constexpr std::size_t mostWork = 12;  ///< the loops, a save, a scan, and some to spare

/// A Live Activity counts as over after that long without work.
constexpr auto quiet = Timing::liveActivityQuietSeconds + Timing::liveActivityCheckInterval * 2;

}  // namespace

BundleIDs Invariants::ownersOf(const AppController& velko) {
    BundleIDs owners;
    for (const MenuBarItem& item : velko.values().items) {
        owners.insert(item.bundleID);
    }
    return owners;
}

/// No animation goes on when nobody does anything.
void Invariants::checkRest(const AppController& velko, const script::Step& done) {
    const std::uint64_t before = std::exchange(wakeUps_, world_.mac().cost().wakeUps);
    const auto waited = done.duration.value_or(std::chrono::milliseconds(0));
    if (done.verb != Verb::wait || waited < calm || velko.isIconWatchRunning()) {
        return;
    }
    const auto perMinute = mostWakeUpsPerMinute + mostWakeUpsPerMinuteAndApp * ownersOf(velko).size();
    const auto minutes = static_cast<std::uint64_t>(std::chrono::ceil<std::chrono::minutes>(waited).count());
    require(wakeUps_ - before <= wakeUpsToSpare + perMinute * minutes, "a calm Velko lets the Mac rest", [&] {
        return std::to_string(wakeUps_ - before) + " wake-ups in " + std::to_string(minutes) + " min";
    });
}

/// What must be true after a time in which nothing happened.
void Invariants::checkCalm(const AppController& velko) {
    SimulatedMac& mac = world_.mac();
    const AppValues& values = velko.values();
    if (!isCalm() || values.problems.engineUnavailable) {
        return;
    }
    require(values.poppedOut.empty() && !values.showingMe, "what was let out for a while is back");
    if (!mac.session.isAttended()) {
        return;  // Velko looks around when somebody is there again
    }
    require(values.problems.trustMissing != mac.accessibility.isPermitted(), "trust is known");
    const bool isAnySilent = std::ranges::any_of(mac.processes.running(), [&](const auto& process) {
        return !mac.accessibility.answersWithin(process.pid, Timing::axMessagingTimeout);
    });
    const bool isInHand = mac.windows.menuOwner() || mac.surfaces.surface(Surfaces::Kind::shelf).isInHand();
    if (!values.health().isOk() || isAnySilent || isInHand) {
        return;
    }
    require(values.state.asPeeking() == nullptr, "an opening ends");
    require(velko.isIconWatchRunning() ||
                (mac.registered().elementObservers == 0 && mac.registered().work <= mostWork),
            "nothing piles up");
    require(mac.pointer.refusesTaps || mac.pointer.listeningTaps() == 1, "clicks are watched");
    require(values.layout.reveal.autoTuckSeconds == 0 || values.isShelfPinned || !values.state.isRevealed(),
            "a reveal ends");
    require(!values.isShelfPinned || values.state.isRevealed(), "only an open shelf is pinned");
    const bool isAnyBusy = std::ranges::any_of(mac.processes.running(), [](const SimulatedProcess& process) {
        return !process.app.isApplication && process.cores > 0;
    });
    require(isAnyBusy || !values.liveActivityShowing || mac.mainThread.now() - calmSince_ < quiet,
            "a Live Activity ends");
    checkInventory(velko);
}

void Invariants::checkInventory(const AppController& velko) {
    SimulatedMac& mac = world_.mac();
    const BundleIDs owners = ownersOf(velko);
    const std::vector<BundleID> visible = mac.visibleIcons();
    const bool isTidy = velko.values().state == RevealState::collapsed() && mac.framework.inForce();
    for (const SimulatedProcess& process : mac.processes.running()) {
        const BundleID& app = process.app.bundleID;
        const bool isOthers = app != velko.ownBundleID() && !AllowlistPlanner::isAlwaysAllowed(app);
        if (!isOthers || app.empty() || mac.iconElement(process.pid, 0) == nullptr) {
            continue;
        }
        const auto detail = [&] { return app; };
        require(owners.contains(app), "every icon is known", detail);
        const bool belongs = velko.values().layout.section(app) == Section::bar;
        const bool hasRoom = std::ranges::none_of(mac.menuBar().slots(), [&](const auto& slot) {
            return slot.pid == process.pid && slot.isSwallowed;
        });
        require(!isTidy || !hasRoom || (std::ranges::count(visible, app) > 0) == belongs,
                "the bar holds what belongs there", detail);
    }
    for (const BundleID& app : owners) {
        require(!mac.workspace.pids(app).empty(), "who has quit is forgotten", [&] { return app; });
    }
    require(std::ranges::equal(std::views::keys(velko.values().usage), owners),
            "usage is of the apps that are there");
}

}  // namespace velko::scenarios
