#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "Playground/Neighbourhood.h"
#include "Playground/Script/Acts.h"
#include "Playground/Script/Clicks.h"
#include "Playground/Script/Clock.h"
#include "Playground/Script/DisplayActs.h"
#include "Playground/Script/Faces.h"
#include "Playground/Script/Files.h"
#include "Playground/Script/Pointing.h"
#include "Playground/Script/Verbs.h"

namespace velko::script {

namespace {

using playground::Stage;

constexpr auto rendererName = "WidgetRenderer_Activities";

void makeHeavy(SimulatedMac& mac, ProcessID pid) {
    mac.processes.work(pid, 0.6);
    mac.processes.setMemory(pid, 900ULL << 20U);
}

Done launch(const Step& step, Stage& stage) {
    const auto bundleID = playground::bundleIDOf(step.app);
    if (!bundleID) {
        return std::unexpected("There is no app " + step.app + ".");
    }
    if (bundleID == stage.mac().workspace.bundleID(stage.mac().processes.ownPID())) {
        return std::unexpected("Velko itself is started by \"velko start\".");
    }
    const auto* neighbour = playground::neighbourWith(*bundleID);
    const std::string name = playground::nameOf(*bundleID);
    const double width = neighbour == nullptr ? 24 : neighbour->iconWidth;
    const SimulatedIcon icon{.title = step.text.value_or(name),
                             .width = step.width ? static_cast<double>(*step.width) : width};
    const ProcessID pid =
        stage.mac().launch({.bundleID = *bundleID,
                            .name = name,
                            .icons = std::vector(static_cast<std::size_t>(step.icons.value_or(1)), icon),
                            .isRegular = step.verb == Verb::launchRegular});
    if (step.flag) {
        makeHeavy(stage.mac(), pid);
    }
    return {};
}

Done launchNeighbours(const Step&, Stage& stage) {
    for (const auto& neighbour : playground::neighbours()) {
        if (stage.mac().workspace.pids(neighbour.bundleID).empty()) {
            stage.mac().launch(playground::appOf(neighbour));
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

Done startActivity(const Step&, Stage& stage) {
    SimulatedMac& mac = stage.mac();
    const auto renderer = rendererOf(mac);
    mac.processes.work(renderer ? *renderer : mac.launch({.name = rendererName, .isApplication = false}),
                       0.01);
    return {};
}

Done endActivity(const Step&, Stage& stage) {
    const auto renderer = rendererOf(stage.mac());
    if (!renderer) {
        return std::unexpected("No Live Activity has been started.");
    }
    stage.mac().processes.work(*renderer, 0);
    return {};
}

Done setClock(Stage& stage, std::chrono::milliseconds change) {
    const Done done = clockCanMove(stage.mac(), change);
    if (done) {
        auto& clock = stage.mac().mainThread;
        clock.setDate(clock.date() + change);
    }
    return done;
}

constexpr auto refusal = "Not today";

Done refuse(const Step& step, Stage& stage) {
    auto& framework = stage.mac().framework;
    framework.refusal = FrameworkError{.domain = "Simulated", .code = 7, .description = refusal};
    framework.refusalsLeft =
        step.amount ? std::optional(static_cast<std::uint64_t>(*step.amount)) : std::nullopt;
    return {};
}

Done recover(const Step&, Stage& stage) {
    auto& framework = stage.mac().framework;
    framework.refusal.reset();
    framework.exception.reset();
    framework.installed = true;
    framework.answerDelay = SimulatedFramework::usualDelay;
    return {};
}

std::chrono::milliseconds durationOf(const Step& step) {
    return step.duration.value_or(std::chrono::milliseconds(0));
}

Done wait(const Step& step, Stage& stage) {
    const Done done = timeCanPass(stage.mac(), durationOf(step));
    if (done) {
        stage.passTime(durationOf(step));
    }
    return done;
}

Done sleep(const Step& step, Stage& stage) {
    const Done done = clockCanMove(stage.mac(), durationOf(step));
    if (done) {
        stage.mac().sleepAndWake(durationOf(step));
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

using Spot = SimulatedMac::BroomSpot;
constexpr auto broomSpots = std::to_array<std::pair<std::string_view, Spot>>(
    {{"bar", Spot::bar}, {"notch", Spot::notch}, {"nowhere", Spot::nowhere}, {"stub", Spot::stub}});

SimulatedClick asTold(const Step& step, SimulatedClick click) {
    click.option = step.flag;
    click.telling = meantBy(tellings, step.word);
    return click;
}

Done pressByVoiceOver(const Step&, Stage& stage) {
    if (stage.velko() == nullptr) {
        return std::unexpected("Velko does not run.");
    }
    if (stage.mac().displays.displays().empty()) {
        return std::unexpected("There is no display.");
    }
    stage.mac().statusItem.pressByVoiceOver();
    return {};
}

/// The icon that the step names, of a process that runs.
Done clickOn(const Step& step, Stage& stage) {
    const auto pids = stage.mac().workspace.pids(appOf(step));
    return pids.empty() ? std::unexpected(step.app + " does not run.")
                        : clickIcon(stage, pids.front(), static_cast<std::size_t>(step.icon.value_or(1) - 1));
}

Done clickFrontMenu(const Step&, Stage& stage) {
    const auto menus = stage.mac().frontMenus();
    if (!menus) {
        return std::unexpected("No app has come to the front.");
    }
    clickAt(stage, {.x = menus->x + menus->width / 2, .y = menus->y + menus->height / 2});
    return {};
}

/// An act that always works.
template <void (*act)(const Step&, Stage&)>
Done does(const Step& step, Stage& stage) {
    act(step, stage);
    return {};
}

constexpr auto macVerbs = std::to_array<MacAct>({
    {Verb::say, does<[](const Step&, Stage&) {}>},
    {Verb::wait, wait},
    {Verb::sleep, sleep},
    {Verb::clockForward,
     [](const Step& step, Stage& stage) -> Done { return setClock(stage, durationOf(step)); }},
    {Verb::clockBack,
     [](const Step& step, Stage& stage) -> Done { return setClock(stage, -durationOf(step)); }},
    {Verb::launch, launch},
    {Verb::launchNeighbours, launchNeighbours},
    {Verb::launchRegular, launch},
    {Verb::stall, does<[](const Step& step, Stage& stage) { stage.mac().stall(durationOf(step)); }>},
    {Verb::menuClose, does<[](const Step&, Stage& stage) {
         stage.mac().closeMenu();
         stage.mac().surfaces.letGo();
     }>},
    {Verb::clickIcon, clickOn},
    {Verb::clickBroom,
     [](const Step& step, Stage& stage) -> Done { return clickBroom(stage, asTold(step, {})); }},
    {Verb::rightClickBroom,
     [](const Step& step, Stage& stage) -> Done {
         return clickBroom(stage, asTold(step, {.isRight = true}));
     }},
    {Verb::controlClickBroom,
     [](const Step& step, Stage& stage) -> Done {
         return clickBroom(stage, asTold(step, {.control = true}));
     }},
    {Verb::clickFrontMenu, clickFrontMenu},
    {Verb::holdBroom,
     [](const Step& step, Stage& stage) -> Done { return clickBroom(stage, {.held = durationOf(step)}); }},
    {Verb::voiceOverPressBroom, pressByVoiceOver},
    {Verb::broomLies,
     does<[](const Step& step, Stage& stage) { stage.mac().putBroom(meantBy(broomSpots, step.word)); }>},
    {Verb::imagesCost,
     does<[](const Step& step, Stage& stage) { stage.mac().statusItem.imageCost = durationOf(step); }>},
    {Verb::nap, does<[](const Step&, Stage& stage) { stage.mac().nap(); }>},
    {Verb::clickOutside, does<[](const Step&, Stage& stage) { clickOutside(stage); }>},
    {Verb::pressEscape, does<[](const Step&, Stage& stage) { pressEscape(stage); }>},
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
    {Verb::trustGrant, does<[](const Step& step, Stage& stage) { stage.mac().grantTrust(!step.flag); }>},
    {Verb::trustRevoke, does<[](const Step& step, Stage& stage) { stage.mac().revokeTrust(!step.flag); }>},
    {Verb::tapDisable, does<[](const Step&, Stage& stage) { stage.mac().pointer.disableTaps(); }>},
    {Verb::tapDie, does<[](const Step&, Stage& stage) { stage.mac().pointer.disableTaps(true); }>},
    {Verb::tapRefuse, does<[](const Step&, Stage& stage) { stage.mac().pointer.refusesTaps = true; }>},
    {Verb::tapAllow, does<[](const Step&, Stage& stage) { stage.mac().pointer.refusesTaps = false; }>},
    {Verb::hitsEndAt,
     does<[](const Step& step, Stage& stage) { stage.mac().setHitsEndAtHost(step.word == "host"); }>},
    {Verb::engineRefuse, refuse},
    {Verb::engineRaise, does<[](const Step&, Stage& stage) {
         stage.mac().framework.exception = RaisedException{.name = "SimulatedException", .reason = refusal};
     }>},
    {Verb::engineSlow,
     does<[](const Step& step, Stage& stage) { stage.mac().framework.answerDelay = durationOf(step); }>},
    {Verb::engineMissing, does<[](const Step&, Stage& stage) { stage.mac().framework.installed = false; }>},
    {Verb::engineRecover, recover},
    {Verb::switchSpace, does<[](const Step&, Stage& stage) { stage.mac().changeSpace(); }>},
    {Verb::returnToSession, does<[](const Step&, Stage& stage) { stage.mac().returnToSession(); }>},
    {Verb::filePlace, placeInFile},
    {Verb::fileSpoil, spoilFile},
    {Verb::savingFail, does<[](const Step&, Stage& stage) { stage.savingFails = true; }>},
    {Verb::savingRecover, does<[](const Step&, Stage& stage) { stage.savingFails = false; }>},
    {Verb::velkoStart, does<[](const Step&, Stage& stage) { stage.startVelko(); }>},
    {Verb::velkoReopen,
     [](const Step&, Stage& stage)
         -> Done { return stage.reopenVelko() ? Done() : std::unexpected("Velko does not run."); }},
    {Verb::velkoQuit, does<[](const Step&, Stage& stage) { stage.quitVelko(); }>},
    {Verb::velkoCrash, does<[](const Step&, Stage& stage) { stage.crashVelko(); }>},
});

}  // namespace

std::span<const MacAct> macActs() {
    return macVerbs;
}

}  // namespace velko::script
