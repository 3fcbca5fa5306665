#include "Playground/Web/Mouse.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
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

Point middle(const Rect& rect) {
    return {.x = rect.x + rect.width / 2, .y = rect.y + rect.height / 2};
}

/// The point within a rectangle that the page measures in thousandths from its top left corner.
Point pointWithin(const Rect& rect, const Fields& fields) {
    constexpr double most = 999;
    const auto part = [&](const char* key) {
        return std::clamp(static_cast<double>(fields.number(key).value_or(most / 2)), 0.0, most) / 1000;
    };
    return {.x = rect.x + rect.width * part("x"), .y = rect.maxY() - rect.height * (part("y") + 0.001)};
}

/// The middle of an icon that a process has, as the bar measures it.
std::optional<Point> middleOfIcon(const SimulatedMac& mac, std::int64_t pid, std::int64_t index) {
    for (const auto& slot : mac.menuBar().slots()) {
        if (slot.pid == pid && index-- == 0) {
            return middle(slot.frame);
        }
    }
    return std::nullopt;
}

/// Where the pointer is, from the page's words, with y growing upwards.
Point pointFor(SimulatedMac& mac, const Fields& fields) {
    const auto displays = mac.displays.displays();
    const Rect screen = displays.empty() ? Rect{} : displays.front().frame;
    const std::string over = fields.text("over").value_or("");
    if (over == "shelf") {
        return pointWithin(mac.surfaces.surface(Surfaces::Kind::shelf).frame().value_or(screen), fields);
    }
    if (over == "broom" || over == "icon") {
        const std::int64_t pid = over == "broom" ? mac.processes.ownPID() : fields.number("pid").value_or(0);
        if (const auto icon = middleOfIcon(mac, pid, fields.number("index").value_or(0))) {
            return {.x = icon->x, .y = screen.maxY() - icon->y};
        }
    }
    return over == "bar" ? Point{.x = screen.x + screen.width / 3, .y = screen.maxY() - 4} : middle(screen);
}

}  // namespace

Done clickBroom(Session& session, const Fields& fields) {
    SimulatedMac& mac = session.mac();
    session.closeControlMenu();
    const bool menuWasOpen = mac.statusItem.isMenuOpen();
    const bool isDone = mac.clickBroom({.isRight = fields.flag("right"),
                                        .option = fields.flag("option"),
                                        .control = fields.flag("control")});
    if (menuWasOpen) {
        session.closeMenus();
    }
    return isDone ? Done() : std::unexpected("The broom does not show.");
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
    constexpr Point desktop{.x = 400, .y = 500};
    pressElsewhere(session);
    session.mac().click(desktop);
    return {};
}

Done movePointer(Session& session, const Fields& fields) {
    session.mac().pointer.moveTo(pointFor(session.mac(), fields));
    return {};
}

}  // namespace velko::web
