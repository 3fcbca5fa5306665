#include <chrono>
#include <cstddef>
#include <optional>
#include <ranges>
#include <string>

#include "Scenarios/Acts/Acts.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"

namespace velko::script {

namespace {

using scenarios::World;

constexpr Point desktop{.x = 300, .y = 500};

/// Closes what a press outside closes.
void closeWhatIsPassing(SimulatedMac& mac) {
    if (mac.statusItem.menu() != nullptr) {
        mac.statusItem.closeMenu();
    }
    mac.surfaces.clickOutside();
}

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
    for (const auto kind : {Surfaces::Kind::search, Surfaces::Kind::note, Surfaces::Kind::shelf}) {
        if (mac.surfaces.surface(kind).isOpen()) {
            mac.surfaces.surface(kind).press({.key = view::Shortcut::Key::escape});
            return;
        }
    }
}

Point middleOf(const Rect& rect) {
    return {.x = rect.x + rect.width / 2, .y = rect.y + rect.height / 2};
}

/// The middle of an icon that shows. Origin at the bottom left of the primary screen.
std::optional<Point> pointOnIcon(ProcessID pid, std::size_t icon, SimulatedMac& mac) {
    auto slots = mac.menuBar().slots() |
                 std::views::filter([pid](const auto& slot) { return slot.pid == pid; }) |
                 std::views::drop(icon);
    const auto displays = mac.displays.displays();
    if (slots.empty() || !slots.front().shows() || displays.empty()) {
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

using Telling = SimulatedClick::Telling;
constexpr auto tellings = std::to_array<std::pair<std::string_view, Telling>>({{"usual", Telling::usual},
                                                                               {"mouse", Telling::mouse},
                                                                               {"system", Telling::system},
                                                                               {"other", Telling::other},
                                                                               {"stale", Telling::stale},
                                                                               {"doubled", Telling::doubled},
                                                                               {"lost", Telling::lost}});

SimulatedClick asTold(const Step& step, SimulatedClick click) {
    click.option = step.flag;
    click.telling = meantBy(tellings, step.word);
    return click;
}

Done pressByVoiceOver(const Step&, World& world) {
    if (world.velko() == nullptr) {
        return std::unexpected("Velko does not run.");
    }
    if (world.mac().displays.displays().empty()) {
        return std::unexpected("There is no display.");
    }
    world.mac().statusItem.pressByVoiceOver();
    return {};
}

/// Clicks on the icon that the step names.
Done clickOn(const Step& step, World& world) {
    const auto pids = world.mac().workspace.pids(appOf(step));
    return pids.empty() ? std::unexpected(step.app + " does not run.")
                        : clickIcon(world, pids.front(), static_cast<std::size_t>(step.icon.value_or(1) - 1));
}

Done clickFrontMenu(const Step&, World& world) {
    const auto menus = world.mac().windows.frontMenus(world.mac().displays.statusBarThickness());
    if (!menus) {
        return std::unexpected("No app has come to the front.");
    }
    clickAt(world, {.x = menus->x + menus->width / 2, .y = menus->y + menus->height / 2});
    return {};
}

constexpr auto mouseVerbs = std::to_array<MacAct>({
    {Verb::menuClose, does<[](const Step&, World& world) {
         world.mac().closeMenu();
         world.mac().surfaces.letGo();
     }>},
    {Verb::clickIcon, clickOn},
    {Verb::clickBroom,
     [](const Step& step, World& world) -> Done { return clickBroom(world, asTold(step, {})); }},
    {Verb::rightClickBroom,
     [](const Step& step, World& world) -> Done {
         return clickBroom(world, asTold(step, {.isRight = true}));
     }},
    {Verb::controlClickBroom,
     [](const Step& step, World& world) -> Done {
         return clickBroom(world, asTold(step, {.control = true}));
     }},
    {Verb::clickFrontMenu, clickFrontMenu},
    {Verb::holdBroom,
     [](const Step& step, World& world) -> Done { return clickBroom(world, {.held = durationOf(step)}); }},
    {Verb::voiceOverPressBroom, pressByVoiceOver},
    {Verb::clickOutside, does<[](const Step&, World& world) { clickOutside(world); }>},
    {Verb::pressEscape, does<[](const Step&, World& world) { pressEscape(world); }>},
    {Verb::pointAt, pointAt},
    {Verb::pointAtIcon, pointAtIcon},
});

}  // namespace

std::span<const MacAct> mouseActs() {
    return mouseVerbs;
}

}  // namespace velko::script
