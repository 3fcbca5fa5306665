#include "Playground/Web/Mouse.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace velko::web {

namespace {

/// A press of the mouse, which everything that listens for clicks hears.
void pressElsewhere(Session& session) {
    if (!session.menus().empty()) {
        session.closeMenus();
    }
    session.mac().surfaces.clickOutside();
}

/// Where the pointer is, from the page's words, with y growing upwards.
Point pointFor(SimulatedMac& mac, std::string_view over) {
    const auto displays = mac.displays.displays();
    const Rect screen = displays.empty() ? Rect{} : displays.front().frame;
    const auto middleOf = [](const Rect& rect) {
        return Point{.x = rect.x + rect.width / 2, .y = rect.y + rect.height / 2};
    };
    if (over == "shelf") {
        return middleOf(mac.surfaces.surface(Surfaces::Kind::shelf).frame().value_or(screen));
    }
    if (over == "broom") {
        const auto& slots = mac.menuBar().slots();
        const auto own = std::ranges::find(slots, mac.processes.ownPID(), &SimulatedMenuBar::Slot::pid);
        if (own != slots.end()) {
            const Point point = middleOf(own->frame);
            return {.x = point.x, .y = screen.maxY() - point.y};
        }
    }
    return over == "bar" ? Point{.x = screen.x + screen.width / 3, .y = screen.maxY() - 4} : middleOf(screen);
}

}  // namespace

Done clickBroom(Session& session, const Fields& fields) {
    SimulatedMac& mac = session.mac();
    session.closeControlMenu();
    const bool menuWasOpen = mac.statusItem.menu() != nullptr;
    mac.clickIcon(mac.processes.ownPID());
    mac.surfaces.clickOutside();
    session.settle();
    if (menuWasOpen) {
        session.closeMenus();
        return {};
    }
    mac.statusItem.click({.isRight = fields.flag("right"),
                          .option = fields.flag("option"),
                          .control = fields.flag("control")});
    return {};
}

Done clickIcon(Session& session, const Fields& fields) {
    const auto pid = fields.number("pid").value_or(0);
    const auto index = fields.number("index").value_or(0);
    if (!std::in_range<ProcessID>(pid) || index < 0) {
        return std::unexpected("There is no such icon.");
    }
    session.closeControlMenu();
    session.mac().surfaces.clickOutside();
    if (session.mac().statusItem.menu() != nullptr) {
        session.closeMenus();
    }
    return session.mac().clickIcon(static_cast<ProcessID>(pid), static_cast<std::size_t>(index))
               ? Done()
               : std::unexpected("That icon does not show.");
}

Done clickDesktop(Session& session, const Fields&) {
    constexpr Point middle{.x = 400, .y = 500};
    pressElsewhere(session);
    session.mac().click(middle);
    return {};
}

Done movePointer(Session& session, const Fields& fields) {
    session.mac().pointer.moveTo(pointFor(session.mac(), fields.text("over").value_or("")));
    return {};
}

}  // namespace velko::web
