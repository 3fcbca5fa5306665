#include "Playground/Script/Player.h"

#include <algorithm>
#include <span>

#include "Playground/Neighbourhood.h"
#include "Playground/Script/Acts.h"

namespace velko::script {

namespace {

using playground::Stage;

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

Done performInVelko(const VelkoAct& act, const Step& step, Stage& stage) {
    return stage.velko() == nullptr ? std::unexpected("Velko does not run.")
                                    : act.perform(step, *stage.velko(), appOf(step));
}

}  // namespace

BundleID appOf(const Step& step) {
    return playground::bundleIDOf(step.app).value_or(step.app);
}

Done perform(const Step& step, Stage& stage) {
    if (const auto* appAct = find(appActs(), step.verb)) {
        return performOnApp(*appAct, step, stage.mac());
    }
    for (const auto acts : {velkoActs(), settingActs()}) {
        if (const auto* act = find(acts, step.verb)) {
            return performInVelko(*act, step, stage);
        }
    }
    const auto* macAct = find(macActs(), step.verb);
    return (macAct == nullptr ? find(expectations(), step.verb) : macAct)->perform(step, stage);
}

}  // namespace velko::script
