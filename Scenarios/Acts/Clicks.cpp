#include "Scenarios/Acts/Clicks.h"

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWindows.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"

namespace velko::script {

namespace {

using scenarios::World;

constexpr Point desktop{.x = 300, .y = 500};

/// What a button going down anywhere else closes.
void closeWhatIsPassing(SimulatedMac& mac) {
    if (mac.statusItem.menu() != nullptr) {
        mac.statusItem.closeMenu();
    }
    mac.surfaces.clickOutside();
}

}  // namespace

Done clickBroom(World& world, const SimulatedClick& click) {
    if (world.velko() == nullptr) {
        return std::unexpected("Velko does not run.");
    }
    if (!world.mac().clickBroom(click)) {
        return std::unexpected("The broom does not show.");
    }
    world.passTime(SimulatedBroom::clickTime + click.held);
    return {};
}

Done clickIcon(World& world, ProcessID pid, std::size_t icon) {
    if (!world.mac().clickIcon(pid, icon)) {
        return std::unexpected("That icon does not show.");
    }
    closeWhatIsPassing(world.mac());
    return {};
}

void clickAt(World& world, Point location) {
    world.mac().click(location);
    closeWhatIsPassing(world.mac());
}

void clickOutside(World& world) {
    clickAt(world, desktop);
}

void pressEscape(World& world) {
    SimulatedMac& mac = world.mac();
    if (mac.statusItem.menu() != nullptr) {
        mac.statusItem.closeMenu();
        return;
    }
    if (mac.windows.menuOwner()) {
        mac.closeMenu();
        return;
    }
    if (mac.surfaces.letGo()) {
        return;
    }
    const bool isForNote = mac.surfaces.surface(Surfaces::Kind::note).isOpen();
    mac.surfaces.surface(isForNote ? Surfaces::Kind::note : Surfaces::Kind::shelf)
        .press({.key = view::Shortcut::Key::escape});
}

}  // namespace velko::script
