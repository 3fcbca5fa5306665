#include <array>
#include <chrono>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"

namespace velko::script {

namespace {

using scenarios::World;

std::size_t indexOf(const Step& step) {
    return static_cast<std::size_t>(step.icon.value_or(1) - 1);
}

/// Changes the icon that the step names.
template <class Change>
Done change(const Step& step, SimulatedMac& mac, ProcessID pid, Change change) {
    if (mac.iconElement(pid, indexOf(step)) == nullptr) {
        return std::unexpected(step.app + " has no such icon.");
    }
    mac.changeIcon(pid, indexOf(step), change);
    return {};
}

/// An act that is a function of the Mac.
template <void (SimulatedMac::*act)(ProcessID)>
Done sent(const Step&, SimulatedMac& mac, ProcessID pid) {
    (mac.*act)(pid);
    return {};
}

constexpr double usualMenus = 300;  // points

template <bool hung>
Done hang(const Step&, SimulatedMac& mac, ProcessID pid) {
    mac.hang(pid, hung);
    return {};
}

Done slowDown(const Step& step, SimulatedMac& mac, ProcessID pid) {
    mac.accessibility.setDelay(pid, step.duration.value_or(std::chrono::milliseconds(0)));
    return {};
}

/// Only one icon of an app stops answering, or answers again.
template <bool hung>
Done hangIcon(const Step& step, SimulatedMac& mac, ProcessID pid) {
    const auto lock = mac.accessibility.hold();
    SimulatedElement* icon = mac.iconElement(pid, indexOf(step));
    if (icon == nullptr) {
        return std::unexpected(step.app + " has no such icon.");
    }
    icon->delay = std::chrono::hours(hung ? 1 : 0);
    return {};
}

Done setBadge(const Step& step, SimulatedMac& mac, ProcessID pid) {
    return change(step, mac, pid, [&](SimulatedIcon& icon) {
        if (const auto text = step.text.value_or(""); text.empty()) {
            icon.value = std::monostate();
        } else {
            icon.value = text;
        }
    });
}

Done removeIcon(const Step& step, SimulatedMac& mac, ProcessID pid) {
    const auto done = change(step, mac, pid, [](SimulatedIcon&) {});
    if (done) {
        mac.removeIcon(pid, indexOf(step));
    }
    return done;
}

constexpr auto appVerbs = std::to_array<AppAct>({
    {Verb::quit, sent<&SimulatedMac::quit>},
    {Verb::crash, sent<&SimulatedMac::crash>},
    {Verb::hang, hang<true>},
    {Verb::unhang, hang<false>},
    {Verb::slow, slowDown},
    {Verb::activate,
     [](const Step& step, SimulatedMac& mac, ProcessID pid) -> Done {
         mac.activate(pid, step.width ? static_cast<double>(*step.width) : usualMenus);
         return {};
     }},
    {Verb::cpu,
     [](const Step& step, SimulatedMac& mac, ProcessID pid) -> Done {
         mac.processes.work(pid, static_cast<double>(step.amount.value_or(0)) / 100);
         return {};
     }},
    {Verb::memory,
     [](const Step& step, SimulatedMac& mac, ProcessID pid) -> Done {
         mac.processes.setMemory(pid, static_cast<std::uint64_t>(step.amount.value_or(1)) << 20U);
         return {};
     }},
    {Verb::iconTitle,
     [](const Step& step, SimulatedMac& mac, ProcessID pid) -> Done {
         return change(step, mac, pid, [&](SimulatedIcon& icon) { icon.title = step.text; });
     }},
    {Verb::iconWidth,
     [](const Step& step, SimulatedMac& mac, ProcessID pid) -> Done {
         return change(step, mac, pid, [&](SimulatedIcon& icon) {
             icon.width = static_cast<double>(step.width.value_or(static_cast<std::int64_t>(icon.width)));
         });
     }},
    {Verb::iconBadge, setBadge},
    {Verb::iconAdd,
     [](const Step& step, SimulatedMac& mac, ProcessID pid) -> Done {
         mac.addIcon(pid, {.title = step.text.value_or(step.app),
                           .width = static_cast<double>(step.width.value_or(24))});
         return {};
     }},
    {Verb::iconRemove, removeIcon},
    {Verb::iconHang, hangIcon<true>},
    {Verb::iconUnhang, hangIcon<false>},
    {Verb::menuOpen, sent<&SimulatedMac::openMenu>},
});

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
    const auto* sample = scenarios::sampleAppWith(*bundleID);
    const std::string name = scenarios::nameOf(*bundleID);
    const double width = sample == nullptr ? 24 : sample->iconWidth;
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
    for (const auto& sample : scenarios::sampleApps()) {
        if (world.mac().workspace.pids(sample.bundleID).empty()) {
            world.mac().launch(scenarios::appOf(sample));
        }
    }
    return {};
}

constexpr auto launchVerbs = std::to_array<MacAct>({
    {Verb::launch, launch},
    {Verb::launchNeighbours, launchNeighbours},
    {Verb::launchRegular, launch},
});

}  // namespace

std::span<const AppAct> appActs() {
    return appVerbs;
}

std::span<const MacAct> launchActs() {
    return launchVerbs;
}

}  // namespace velko::script
