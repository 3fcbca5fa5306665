#include <utility>

#include "Simulator/SimulatedMac.h"

// What the user and the session do.

namespace velko {

void SimulatedMac::sleepAndWake(std::chrono::milliseconds duration) {
    mainThread.sleepFor(duration);
    tell(WorkspaceNotice::Kind::didWake);
    tell(WorkspaceNotice::Kind::screensDidWake);
}

void SimulatedMac::changeSpace() {
    tell(WorkspaceNotice::Kind::activeSpaceChanged);
}

void SimulatedMac::returnToSession() {
    tell(WorkspaceNotice::Kind::sessionBecameActive);
}

void SimulatedMac::setDisplays(std::vector<Display> arrangement) {
    displays.set(std::move(arrangement));
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
