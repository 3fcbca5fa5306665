#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"

namespace velko::script {

namespace {

using scenarios::World;

constexpr auto rendererName = "WidgetRenderer_Activities";
constexpr auto refusal = "Not today";

Display displayNamed(std::string_view name, Point origin) {
    constexpr auto plain = std::to_array<std::pair<std::string_view, Size>>(
        {{"small", {1280, 800}}, {"desk", {1920, 1080}}, {"wide", {3440, 1440}}});
    const auto* const size = std::ranges::find(plain, name, [](const auto& each) { return each.first; });
    if (size != plain.end()) {
        return SimulatedDisplays::plain(origin, size->second);
    }
    Display laptop = SimulatedDisplays::notched(origin);
    laptop.safeAreaTop = name == "laptop-room" ? 0 : laptop.safeAreaTop;
    if (name == "laptop-inset") {
        laptop.auxiliaryTopLeft = {};
        laptop.auxiliaryTopRight = {};
    }
    return laptop;
}

Done arrangeDisplays(const Step& step, scenarios::World& world) {
    std::vector<Display> displays;
    std::string_view rest = step.word == "none" ? "" : std::string_view(step.word);
    while (!rest.empty()) {
        const auto end = std::min(rest.find('+'), rest.size());
        const Point origin{.x = displays.empty() ? 0 : displays.front().frame.maxX(), .y = 0};
        displays.push_back(displayNamed(rest.substr(0, end), origin));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    world.mac().setDisplays(std::move(displays));
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

using Spot = BroomSpot;
constexpr auto broomSpots = std::to_array<std::pair<std::string_view, Spot>>(
    {{"bar", Spot::bar}, {"notch", Spot::notch}, {"nowhere", Spot::nowhere}, {"stub", Spot::stub}});

constexpr auto systemVerbs = std::to_array<MacAct>({
    {Verb::stall, does<[](const Step& step, World& world) { world.mac().session.stall(durationOf(step)); }>},
    {Verb::broomLies,
     does<[](const Step& step, World& world) { world.mac().putBroom(meantBy(broomSpots, step.word)); }>},
    {Verb::imagesCost,
     does<[](const Step& step, World& world) { world.mac().statusItem.imageCost = durationOf(step); }>},
    {Verb::nap, does<[](const Step&, World& world) { world.mac().activity.nap(); }>},
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
    {Verb::sleepDisplays, does<[](const Step&, World& world) { world.mac().session.sleepDisplays(); }>},
    {Verb::wakeDisplays, does<[](const Step&, World& world) { world.mac().session.wakeDisplays(); }>},
    {Verb::leaveSession, does<[](const Step&, World& world) { world.mac().session.leaveToOther(); }>},
    {Verb::switchSpace, does<[](const Step&, World& world) { world.mac().session.changeSpace(); }>},
    {Verb::returnToSession, does<[](const Step&, World& world) { world.mac().session.returnToUser(); }>},
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

std::span<const MacAct> systemActs() {
    return systemVerbs;
}

}  // namespace velko::script
