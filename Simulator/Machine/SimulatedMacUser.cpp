#include <utility>

#include "Simulator/Machine/SimulatedMac.h"

// What the user and the session do.

namespace velko {

namespace {

/// How late apps answer for a moment after a wake, or when Spaces, displays or users change.
constexpr auto whenMuchChanges = std::chrono::milliseconds(5);
constexpr auto aMoment = std::chrono::seconds(1);
constexpr auto longerThanAnybodyWaits = std::chrono::hours(1);

}  // namespace

void SimulatedMac::revokeTrust(bool isTold) {
    accessibility.setTrusted(false, isTold);
    pointer.killTaps();
}

void SimulatedMac::setHitsEndAtHost(bool host) {
    hitsEndAtHost_ = host;
    refresh();
}

void SimulatedMac::stall(std::chrono::milliseconds duration) {
    keepAppsBusy(longerThanAnybodyWaits, duration);
}

void SimulatedMac::keepAppsBusy(MainThread::Uptime delay, MainThread::Uptime duration) {
    const auto until = thread_.now() + duration;
    if (thread_.now() < busyUntil_ && delay < busyBy_) {
        return;  // they are busier already
    }
    busyUntil_ = until;
    busyBy_ = delay;
    accessibility.setLoad(delay);
    thread_.happen(duration, [this, until] {
        if (busyUntil_ == until) {  // nothing has kept them busy anew
            accessibility.setLoad({});
        }
    });
}

void SimulatedMac::sleepAndWake(std::chrono::milliseconds duration) {
    mainThread.sleepFor(duration);
    keepAppsBusy(whenMuchChanges, aMoment);
    tell(WorkspaceNotice::Kind::didWake);
    tell(WorkspaceNotice::Kind::screensDidWake);
}

void SimulatedMac::changeSpace() {
    keepAppsBusy(whenMuchChanges, aMoment);
    tell(WorkspaceNotice::Kind::activeSpaceChanged);
}

void SimulatedMac::returnToSession() {
    keepAppsBusy(whenMuchChanges, aMoment);
    tell(WorkspaceNotice::Kind::sessionBecameActive);
}

void SimulatedMac::setDisplays(std::vector<Display> arrangement) {
    keepAppsBusy(whenMuchChanges, aMoment);
    displays.set(std::move(arrangement));
    settleBroom(BroomSpot::stub, std::chrono::milliseconds(200));
    refresh();
}

void SimulatedMac::openMenu(ProcessID pid) {
    closeMenu();
    windows.openMenu(pid);
    if (const auto root = accessibility.root(pid)) {
        accessibility.notify(root, "AXMenuOpened");
    }
}

void SimulatedMac::closeMenu() {
    const auto owner = windows.menuOwner();
    windows.closeMenu();
    if (const auto root = owner ? accessibility.root(*owner) : nullptr) {
        accessibility.notify(root, "AXMenuClosed");
    }
}

void SimulatedMac::activate(ProcessID pid) {
    front_ = pid;
    refresh();
    tell(WorkspaceNotice::Kind::activated, pid, workspace.bundleID(pid));
}

void SimulatedMac::click(Point location) {
    pointer.press(location);
    pointer.release();
    const auto owner = windows.menuOwner();
    closeMenu();
    const auto* slot = menuBar_.under(location);
    if (slot != nullptr && slot->pid != owner && slot->pid != processes.ownPID()) {
        openMenu(slot->pid);
    }
}

bool SimulatedMac::clickIcon(ProcessID pid, std::size_t index) {
    const auto* slot = menuBar_.find(pid, index);
    if (slot == nullptr || !slot->isVisible) {
        return false;
    }
    click({.x = slot->frame.x + slot->frame.width / 2, .y = slot->frame.y + slot->frame.height / 2});
    return true;
}

}  // namespace velko
