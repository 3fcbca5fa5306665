#include "Scenarios/Acts/Acts.h"

#include <algorithm>
#include <span>

#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"

namespace velko::script {

namespace {

using scenarios::World;

template <class Act>
const Act* find(std::span<const Act> acts, Verb verb) {
    const auto act = std::ranges::find(acts, verb, &Act::verb);
    return act == acts.end() ? nullptr : &*act;
}

Done performOnApp(const AppAct& act, const Step& step, SimulatedMac& mac) {
    const auto pids = mac.workspace.pids(appOf(step));
    if (pids.empty()) {
        return std::unexpected(step.app + " does not run.");
    }
    if (pids.front() == mac.processes.ownPID()) {
        return std::unexpected("Velko's own process is left alone.");
    }
    return act.perform(step, mac, pids.front());
}

Done performInVelko(const VelkoAct& act, const Step& step, World& world) {
    return world.velko() == nullptr ? std::unexpected("Velko does not run.")
                                    : act.perform(step, *world.velko(), appOf(step));
}

}  // namespace

std::array<std::span<const MacAct>, 9> macActs() {
    return {timeActs(), launchActs(),  mouseActs(),  keyActs(),     faceActs(),
            fileActs(), commandActs(), systemActs(), expectations()};
}

BundleID appOf(const Step& step) {
    return scenarios::bundleIDOf(step.app).value_or(step.app);
}

Done perform(const Step& step, World& world) {
    if (const auto* appAct = find(appActs(), step.verb)) {
        return performOnApp(*appAct, step, world.mac());
    }
    for (const auto acts : {velkoActs(), settingActs()}) {
        if (const auto* act = find(acts, step.verb)) {
            return performInVelko(*act, step, world);
        }
    }
    for (const auto acts : macActs()) {
        if (const auto* act = find(acts, step.verb)) {
            return act->perform(step, world);
        }
    }
    return std::unexpected("Nobody knows what that means.");
}

std::chrono::milliseconds durationOf(const Step& step) {
    return step.duration.value_or(std::chrono::milliseconds(0));
}

}  // namespace velko::script
