#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/Acts/Clicks.h"
#include "Scenarios/Acts/Clock.h"
#include "Scenarios/Acts/DisplayActs.h"
#include "Scenarios/Acts/Faces.h"
#include "Scenarios/Acts/Files.h"
#include "Scenarios/Acts/Pointing.h"
#include "Scenarios/Language/Verbs.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedDisplays.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWindows.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedActivity.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Simulator/Time/SimulatedZone.h"

namespace velko::script {

namespace {

using scenarios::World;

constexpr auto rendererName = "WidgetRenderer_Activities";

void makeHeavy(SimulatedMac& mac, ProcessID pid) {
    mac.processes.work(pid, 0.6);
    mac.processes.setMemory(pid, 900ULL << 20U);
}

Done launch(const Step& step, World& world) {
    const auto bundleID = scenarios::bundleIDOf(step.app);
    if (!bundleID) {
        return std::unexpected("There is no app " + step.app + ".");
    }
    if (bundleID == world.mac().workspace.bundleID(world.mac().processes.ownPID())) {
        return std::unexpected("Velko itself is started by \"velko start\".");
    }
    const auto* neighbour = scenarios::sampleAppWith(*bundleID);
    const std::string name = scenarios::nameOf(*bundleID);
    const double width = neighbour == nullptr ? 24 : neighbour->iconWidth;
    const SimulatedIcon icon{.title = step.text.value_or(name),
                             .width = step.width ? static_cast<double>(*step.width) : width};
    const ProcessID pid =
        world.mac().launch({.bundleID = *bundleID,
                            .name = name,
                            .icons = std::vector(static_cast<std::size_t>(step.icons.value_or(1)), icon),
                            .isRegular = step.verb == Verb::launchRegular});
    if (step.flag) {
        makeHeavy(world.mac(), pid);
    }
    return {};
}

Done launchNeighbours(const Step&, World& world) {
    for (const auto& neighbour : scenarios::sampleApps()) {
        if (world.mac().workspace.pids(neighbour.bundleID).empty()) {
            world.mac().launch(scenarios::appOf(neighbour));
        }
    }
    return {};
}

std::optional<ProcessID> rendererOf(const SimulatedMac& mac) {
    const auto& running = mac.processes.running();
    const auto found =
        std::ranges::find(running, rendererName, [](const auto& process) { return process.app.name; });
    return found == running.end() ? std::nullopt : std::optional(found->pid);
}

Done startActivity(const Step&, World& world) {
    SimulatedMac& mac = world.mac();
    const auto renderer = rendererOf(mac);
    mac.processes.work(renderer ? *renderer : mac.launch({.name = rendererName, .isApplication = false}),
                       0.01);
    return {};
}

Done endActivity(const Step&, World& world) {
    const auto renderer = rendererOf(world.mac());
    if (!renderer) {
        return std::unexpected("No Live Activity has been started.");
    }
    world.mac().processes.work(*renderer, 0);
    return {};
}

Done setClock(World& world, std::chrono::milliseconds change) {
    const Done done = clockCanMove(world.mac(), change);
    if (done) {
        auto& clock = world.mac().mainThread;
        clock.setDate(clock.date() + change);
    }
    return done;
}

constexpr auto refusal = "Not today";

Done refuse(const Step& step, World& world) {
    auto& framework = world.mac().framework;
    framework.refusal = FrameworkError{.domain = "Simulated", .code = 7, .description = refusal};
    framework.refusalsLeft =
        step.amount ? std::optional(static_cast<std::uint64_t>(*step.amount)) : std::nullopt;
    return {};
}

Done recover(const Step&, World& world) {
    auto& framework = world.mac().framework;
    framework.refusal.reset();
    framework.exception.reset();
    framework.installed = true;
    framework.answerDelay = SimulatedFramework::usualDelay;
    return {};
}

std::chrono::milliseconds durationOf(const Step& step) {
    return step.duration.value_or(std::chrono::milliseconds(0));
}

Done wait(const Step& step, World& world) {
    const Done done = timeCanPass(world.mac(), durationOf(step));
    if (done) {
        world.passTime(durationOf(step));
    }
    return done;
}

Done sleep(const Step& step, World& world) {
    const Done done = clockCanMove(world.mac(), durationOf(step));
    if (done) {
        world.mac().session.sleepAndWake(durationOf(step));
    }
    return done;
}

/// The value that a word stands for; all of them are in the table of verbs.
template <class Rows>
auto meantBy(const Rows& rows, std::string_view word) {
    const auto row = std::ranges::find(rows, word, [](const auto& each) { return each.first; });
    return row == rows.end() ? rows.front().second : row->second;
}

using Telling = SimulatedClick::Telling;
constexpr auto tellings = std::to_array<std::pair<std::string_view, Telling>>({{"usual", Telling::usual},
                                                                               {"mouse", Telling::mouse},
                                                                               {"system", Telling::system},
                                                                               {"other", Telling::other},
                                                                               {"stale", Telling::stale},
                                                                               {"doubled", Telling::doubled},
                                                                               {"lost", Telling::lost}});

using Spot = BroomSpot;
constexpr auto broomSpots = std::to_array<std::pair<std::string_view, Spot>>(
    {{"bar", Spot::bar}, {"notch", Spot::notch}, {"nowhere", Spot::nowhere}, {"stub", Spot::stub}});

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

/// The icon that the step names, of a process that runs.
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

/// An act that always works.
template <void (*act)(const Step&, World&)>
Done does(const Step& step, World& world) {
    act(step, world);
    return {};
}

constexpr auto macVerbs = std::to_array<MacAct>({
    {Verb::say, does<[](const Step&, World&) {}>},
    {Verb::wait, wait},
    {Verb::sleep, sleep},
    {Verb::clockForward,
     [](const Step& step, World& world) -> Done { return setClock(world, durationOf(step)); }},
    {Verb::clockBack,
     [](const Step& step, World& world) -> Done { return setClock(world, -durationOf(step)); }},
    {Verb::zone, does<[](const Step& step, World& world) { world.mac().zone.set(step.word); }>},
    {Verb::launch, launch},
    {Verb::launchNeighbours, launchNeighbours},
    {Verb::launchRegular, launch},
    {Verb::stall, does<[](const Step& step, World& world) { world.mac().session.stall(durationOf(step)); }>},
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
    {Verb::broomLies,
     does<[](const Step& step, World& world) { world.mac().putBroom(meantBy(broomSpots, step.word)); }>},
    {Verb::imagesCost,
     does<[](const Step& step, World& world) { world.mac().statusItem.imageCost = durationOf(step); }>},
    {Verb::nap, does<[](const Step&, World& world) { world.mac().activity.nap(); }>},
    {Verb::clickOutside, does<[](const Step&, World& world) { clickOutside(world); }>},
    {Verb::pressEscape, does<[](const Step&, World& world) { pressEscape(world); }>},
    {Verb::pressKey, pressKey},
    {Verb::pointAt, pointAt},
    {Verb::pointAtIcon, pointAtIcon},
    {Verb::choose, choose},
    {Verb::chooseIn, chooseIn},
    {Verb::openMenuIn, openMenuIn},
    {Verb::press, press},
    {Verb::drag, drag},
    {Verb::drop, drop},
    {Verb::close, close},
    {Verb::exportLayout, exportLayout},
    {Verb::importLayout, importLayout},
    {Verb::activityStart, startActivity},
    {Verb::activityEnd, endActivity},
    {Verb::displays, arrangeDisplays},
    {Verb::trustGrant, does<[](const Step& step, World& world) { world.mac().grantTrust(!step.flag); }>},
    {Verb::trustRevoke, does<[](const Step& step, World& world) { world.mac().revokeTrust(!step.flag); }>},
    {Verb::tapDisable, does<[](const Step&, World& world) { world.mac().pointer.disableTaps(); }>},
    {Verb::tapDie, does<[](const Step&, World& world) { world.mac().pointer.disableTaps(true); }>},
    {Verb::tapRefuse, does<[](const Step&, World& world) { world.mac().pointer.refusesTaps = true; }>},
    {Verb::tapAllow, does<[](const Step&, World& world) { world.mac().pointer.refusesTaps = false; }>},
    {Verb::hitsEndAt,
     does<[](const Step& step, World& world) { world.mac().setHitsEndAtHost(step.word == "host"); }>},
    {Verb::engineRefuse, refuse},
    {Verb::engineRaise, does<[](const Step&, World& world) {
         world.mac().framework.exception = RaisedException{.name = "SimulatedException", .reason = refusal};
     }>},
    {Verb::engineSlow,
     does<[](const Step& step, World& world) { world.mac().framework.answerDelay = durationOf(step); }>},
    {Verb::engineMissing, does<[](const Step&, World& world) { world.mac().framework.installed = false; }>},
    {Verb::engineRecover, recover},
    {Verb::switchSpace, does<[](const Step&, World& world) { world.mac().session.changeSpace(); }>},
    {Verb::returnToSession, does<[](const Step&, World& world) { world.mac().session.returnToUser(); }>},
    {Verb::filePlace, placeInFile},
    {Verb::fileSpoil, spoilFile},
    {Verb::savingFail, does<[](const Step&, World& world) { world.savingFails = true; }>},
    {Verb::savingRecover, does<[](const Step&, World& world) { world.savingFails = false; }>},
    {Verb::velkoStart, does<[](const Step&, World& world) { world.startVelko(); }>},
    {Verb::velkoReopen,
     [](const Step&, World& world)
         -> Done { return world.reopenVelko() ? Done() : std::unexpected("Velko does not run."); }},
    {Verb::velkoQuit, does<[](const Step&, World& world) { world.quitVelko(); }>},
    {Verb::velkoCrash, does<[](const Step&, World& world) { world.crashVelko(); }>},
});

}  // namespace

std::span<const MacAct> macActs() {
    return macVerbs;
}

}  // namespace velko::script
