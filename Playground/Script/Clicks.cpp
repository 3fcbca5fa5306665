#include "Playground/Script/Clicks.h"

namespace velko::script {

namespace {

using playground::Stage;

constexpr Point desktop{.x = 300, .y = 500};

/// What a button going down anywhere else closes.
void closeWhatIsPassing(SimulatedMac& mac) {
    if (mac.statusItem.menu() != nullptr) {
        mac.statusItem.closeMenu();
    }
    mac.surfaces.clickOutside();
}

}  // namespace

Done clickBroom(Stage& stage, const SimulatedClick& click) {
    if (stage.velko() == nullptr) {
        return std::unexpected("Velko does not run.");
    }
    if (!stage.mac().clickBroom(click)) {
        return std::unexpected("The broom does not show.");
    }
    stage.passTime(SimulatedMac::clickTime + click.held);
    return {};
}

Done clickIcon(Stage& stage, ProcessID pid, std::size_t icon) {
    if (!stage.mac().clickIcon(pid, icon)) {
        return std::unexpected("That icon does not show.");
    }
    closeWhatIsPassing(stage.mac());
    return {};
}

void clickAt(Stage& stage, Point location) {
    stage.mac().click(location);
    closeWhatIsPassing(stage.mac());
}

void clickOutside(Stage& stage) {
    clickAt(stage, desktop);
}

void pressEscape(Stage& stage) {
    SimulatedMac& mac = stage.mac();
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
