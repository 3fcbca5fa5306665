#include "Scenarios/Acts/Pointing.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <ranges>
#include <string>

#include "Simulator/Desktop/SimulatedDisplays.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"

namespace velko::script {

namespace {

using scenarios::World;

Point middleOf(const Rect& rect) {
    return {.x = rect.x + rect.width / 2, .y = rect.y + rect.height / 2};
}

/// On an icon that shows: origin at the bottom left of the primary screen.
std::optional<Point> pointOnIcon(ProcessID pid, std::size_t icon, SimulatedMac& mac) {
    auto slots = mac.menuBar().slots() |
                 std::views::filter([pid](const auto& slot) { return slot.pid == pid; }) |
                 std::views::drop(icon);
    const auto displays = mac.displays.displays();
    if (slots.empty() || !slots.front().isVisible || displays.empty()) {
        return std::nullopt;
    }
    const Point middle = middleOf(slots.front().frame);
    return Point{.x = middle.x, .y = displays.front().frame.maxY() - middle.y};
}

std::optional<Point> pointAtPlace(const std::string& place, SimulatedMac& mac) {
    const auto displays = mac.displays.displays();
    if (displays.empty()) {
        return std::nullopt;
    }
    const Rect& screen = displays.front().frame;
    if (place == "shelf") {
        const auto frame = mac.surfaces.surface(Surfaces::Kind::shelf).frame();
        if (!frame) {
            return std::nullopt;
        }
        const Point middle = middleOf(*frame);
        const bool isThere = mac.pointer.location() == middle;
        return Point{.x = middle.x + (isThere ? frame->width / 4 : 0), .y = middle.y};
    }
    if (place == "broom") {
        return pointOnIcon(mac.processes.ownPID(), 0, mac);
    }
    return place == "bar" ? Point{.x = screen.x + screen.width / 3, .y = screen.maxY() - 4}
                          : middleOf(screen);
}

void travelTo(Point goal, World& world) {
    constexpr int stops = 5;
    SimulatedPointer& pointer = world.mac().pointer;
    const Point from = pointer.location();
    for (int stop = 1; stop <= stops; ++stop) {
        const double part = static_cast<double>(stop) / stops;
        pointer.moveTo({.x = from.x + (goal.x - from.x) * part, .y = from.y + (goal.y - from.y) * part});
        world.passTime(std::chrono::milliseconds(20));
    }
}

}  // namespace

Done pointAt(const Step& step, World& world) {
    const auto goal = pointAtPlace(step.word, world.mac());
    if (!goal) {
        return std::unexpected("There is no " + step.word + " to point at.");
    }
    travelTo(*goal, world);
    return {};
}

Done pointAtIcon(const Step& step, World& world) {
    SimulatedMac& mac = world.mac();
    const auto pids = mac.workspace.pids(appOf(step));
    const auto goal =
        pids.empty() ? std::nullopt
                     : pointOnIcon(pids.front(), static_cast<std::size_t>(step.icon.value_or(1) - 1), mac);
    if (!goal) {
        return std::unexpected(step.app + " has no such icon that shows.");
    }
    travelTo(*goal, world);
    return {};
}

}  // namespace velko::script
