#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Contracts/ActingContracts.h"
#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/ForwardingPorts.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/Time/HostMainThread.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Checks/HotKeyContract.h"
#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Contracts::Checks;

Contracts::TestMac testMacOf(SimulatedMac& mac) {
    return {.pass = [&mac](MainThread::Uptime duration) { mac.advance(duration); },
            .launch =
                [&mac](const BundleID& bundleID) {
                    return mac.launch({.bundleID = bundleID, .name = bundleID, .icons = {{}}});
                },
            .launchRegular =
                [&mac](const BundleID& bundleID) {
                    return mac.launch({.bundleID = bundleID, .name = bundleID, .isRegular = true});
                },
            .quit = [&mac](ProcessID pid) { mac.quit(pid); },
            .hang = [&mac](ProcessID pid) { mac.hang(pid, true); },
            .setTrusted = [&mac](bool trusted) { trusted ? mac.grantTrust() : mac.revokeTrust(); },
            .wake = [&mac] { mac.session.sleepAndWake(1h); },
            .setZone = [&mac](const std::string& name) { mac.zone.set(name); },
            .changeDisplays = [&mac] { mac.setDisplays({SimulatedDisplays::notched()}); },
            .openMenu = [&mac](ProcessID pid) { mac.openMenu(pid); },
            .closeMenu = [&mac] { mac.closeMenu(); },
            .activate = [&mac](ProcessID pid) { mac.activate(pid); },
            .click = [&mac](ProcessID pid) { mac.clickIcon(pid); },
            .disableTaps = [&mac] { mac.pointer.disableTaps(); },
            .refuseTaps = [&mac](bool refuse) { mac.pointer.refusesTaps = refuse; },
            .work = [&mac](ProcessID pid) { mac.processes.work(pid, 1); },
            .shows =
                [&mac](const BundleID& bundleID) {
                    return std::ranges::count(mac.visibleIcons(), bundleID) > 0;
                }};
}

void expectAllKept(const Checks& checks) {
    EXPECT_FALSE(checks.empty());
    for (const auto& check : checks) {
        EXPECT_TRUE(check.passed) << check.name << ": " << check.seen;
    }
}

std::vector<std::string> broken(const Checks& checks) {
    std::vector<std::string> names;
    for (const auto& check : checks) {
        if (!check.passed) {
            names.push_back(check.name);
        }
    }
    return names;
}

TEST(PortContract, TheSimulatedMainThreadKeepsIt) {
    SimulatedMac mac;
    Checks checks;
    Contracts::checkMainThread(mac.mainThread, testMacOf(mac).pass, checks);
    expectAllKept(checks);
}

TEST(PortContract, TheMainThreadOnTheHostKeepsIt) {
    HostMainThread host;
    Checks checks;
    Contracts::checkMainThread(host, [&host](MainThread::Uptime duration) { host.runFor(duration); }, checks);
    expectAllKept(checks);
}

TEST(PortContract, TheOtherSimulatedPortsKeepTheHarmlessPart) {
    for (const bool trusted : {true, false}) {
        SimulatedMac mac({.trusted = trusted,
                          .displays = {SimulatedDisplays::notched(), SimulatedDisplays::plain({1512, -98})}});
        const Platform platform = mac.platform();
        Checks checks;
        Contracts::checkAccessibility(platform, checks);
        Contracts::checkWorkspace(platform, checks);
        Contracts::checkDisplays(platform.displays, checks);
        Contracts::checkProcesses(platform.processes, checks);
        Contracts::checkWindows(platform.windows, checks);
        Contracts::checkPointer(platform, checks);
        for (const auto* className : {"MBAssessmentModeAssertion", "MBGoneInThisBuild"}) {
            Contracts::checkPrivateFramework(platform.privateFramework, mac.framework.path, className,
                                             checks);
        }
        expectAllKept(checks);
    }
}

TEST(PortContract, TheSimulatedPortsKeepThePartThatActs) {
    using Suite = void (*)(const Platform&, const Contracts::TestMac&, Checks&);
    for (const Suite suite :
         {Contracts::checkApps, Contracts::checkNotices, Contracts::checkOtherAppsElements,
          Contracts::checkMenus, Contracts::checkClicks, Contracts::checkWork, Contracts::checkZone,
          Contracts::checkAssertions}) {
        for (const bool hitsEndAtHost : {true, false}) {
            SimulatedMac mac;
            mac.setHitsEndAtHost(hitsEndAtHost);
            Checks checks;
            suite(mac.platform(), testMacOf(mac), checks);
            expectAllKept(checks);
        }
    }
}

TEST(PortContract, TheSimulatedKeyboardKeepsIt) {
    SimulatedMac mac;
    Checks checks;
    Contracts::checkHotKeys(mac.hotKeys, checks);
    Contracts::checkPressedKeys(
        mac.hotKeys,
        {.pass = testMacOf(mac).pass,
         .press = [&mac](const KeyCombination& keys) { mac.hotKeys.press(keys); },
         .giveToOther = [&mac](const KeyCombination& keys) { mac.hotKeys.ofOthers.insert(keys); },
         .changeLayout = [&mac] { mac.hotKeys.setLayout({{0, "q"}}); }},
        checks);
    expectAllKept(checks);
}

/// Forgets to set a messaging time-out.
class ForgetfulAccessibility final : public ForwardingAccessibility {
 public:
    using ForwardingAccessibility::ForwardingAccessibility;

    [[nodiscard]] AXElement application(ProcessID pid, Uptime /*messagingTimeout*/) const override {
        return ForwardingAccessibility::application(pid, Uptime::zero());
    }
};

TEST(PortContract, FindsAForgottenTimeout) {
    SimulatedMac mac;
    ForgetfulAccessibility forgetful(mac.accessibility);
    const Platform real = mac.platform();
    Checks checks;
    Contracts::checkOtherAppsElements({.mainThread = real.mainThread,
                                       .accessibility = forgetful,
                                       .workspace = real.workspace,
                                       .displays = real.displays,
                                       .pointer = real.pointer,
                                       .processes = real.processes,
                                       .windows = real.windows,
                                       .privateFramework = real.privateFramework,
                                       .activity = real.activity},
                                      testMacOf(mac), checks);
    EXPECT_EQ(broken(checks),
              (std::vector<std::string>{"a hung app costs the time-out of its element",
                                        "an element that is reached from another has its time-out"}));
}

/// Does everything at once, and forgets that work can be cancelled.
class HastyMainThread final : public MainThread {
 public:
    explicit HastyMainThread(SimulatedMainThread& next) : next_(next) {}

    [[nodiscard]] bool isCurrent() const noexcept override { return true; }
    [[nodiscard]] Uptime now() const override { return next_.now(); }
    [[nodiscard]] PreciseDate date() const override { return next_.date(); }
    void post(Work work) override { work(); }
    [[nodiscard]] Task after(Uptime delay, Work work) override {
        next_.after(delay, std::move(work)).detach();
        return {};
    }
    [[nodiscard]] Task every(Uptime period, Work work) override {
        return next_.every(period, std::move(work));
    }

 protected:
    [[nodiscard]] Task startBackground(Read read, Then then) override {
        then(read());
        return {};
    }

 private:
    SimulatedMainThread& next_;
};

TEST(PortContract, FindsAMainThreadThatRunsWorkAtOnceAndIgnoresCancelling) {
    SimulatedMac mac;
    HastyMainThread hasty(mac.mainThread);
    Checks checks;
    Contracts::checkMainThread(hasty, testMacOf(mac).pass, checks);
    const auto names = broken(checks);
    for (const auto* name :
         {"main thread: work runs by due time, then in order of scheduling",
          "main thread: cancelled, destroyed and replaced tasks never run, detached ones do",
          "main thread: a background answer never comes inside the call"}) {
        EXPECT_EQ(std::ranges::count(names, name), 1) << name;
    }
}

}  // namespace
}  // namespace velko
