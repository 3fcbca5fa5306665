#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/ForwardingPorts.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

class ItemOpenerTest : public testing::Test {
 protected:
    ~ItemOpenerTest() override {
        opener.reset();
        mac.advance(2min);
        EXPECT_EQ(mac.registered(), SimulatedMac::Registered{}) << "something outlives the opener";
    }

    ProcessID launch(const BundleID& bundleID, std::vector<SimulatedIcon> icons = {{}}) {
        return mac.launch({.bundleID = bundleID, .name = bundleID, .icons = std::move(icons)});
    }

    void open(const BundleID& bundleID) {
        opener->open({bundleID, [this](const std::string& line) { lines.push_back(line); },
                      [this, bundleID] { lines.push_back("closed " + bundleID); }});
    }

    /// What was logged, and which openings were reported to be over, since the last such question.
    Lines heard(MainThread::Uptime duration) {
        mac.advance(duration);
        return std::exchange(lines, {});
    }

    SimulatedMac mac;
    Lines lines;
    std::optional<ItemOpener> opener{std::in_place, mac.platform()};
    ProcessID target = launch("a");
    ProcessID other = launch("b");
};

TEST_F(ItemOpenerTest, PressesWhenTheBarHasMadeRoomAndReportsOnceHoweverItEnds) {
    const std::pair<std::function<void()>, Lines> endings[] = {
        {[&] { mac.closeMenu(); }, {"closed a"}},
        {[&] { mac.activate(other); }, {"another app became active (b), ending open", "closed a"}},
        {[&] { mac.activate(mac.launch({.name = "Nameless", .bundlePath = ""})); },
         {"another app became active (?), ending open", "closed a"}},
        {[&] { mac.advance(60s); }, {"open a: no menu-closed notification, ending", "closed a"}},
        {[&] { opener->cancel(); }, {}},
    };
    for (const auto& [act, expected] : endings) {
        mac.closeMenu();
        heard(1s);
        open("a");
        EXPECT_EQ(heard(149ms), Lines{});
        EXPECT_EQ(heard(2ms), Lines{"open a: press ok"});
        EXPECT_EQ(mac.windows.menuOwner(), target);
        mac.advance(1ms);
        act();
        EXPECT_EQ(heard(0ms), expected);
        EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
    }
}

TEST_F(ItemOpenerTest, EndsWithThePressResultUnlessTheAppIsOnlySlow) {
    open("c");
    EXPECT_EQ(std::exchange(lines, {}), (Lines{"open c: app not running", "closed c"})) << "at once";
    launch("iconless", {});
    open("iconless");
    EXPECT_EQ(heard(1s), (Lines{"open iconless: press item not found", "closed iconless"}));
    mac.iconElement(target, 0)->actions.clear();
    open("a");
    EXPECT_EQ(heard(1s), (Lines{"open a: press AX error -25206", "closed a"}));
    EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
    const ProcessID slow = launch("slow", {{}, {}});
    mac.iconElement(slow, 0)->delay = 10s;
    mac.iconElement(slow, 1)->actions.clear();
    open("slow");
    EXPECT_EQ(heard(30s), Lines{"open slow: press ok (slow app, menu likely open)"});
    mac.closeMenu();
    EXPECT_EQ(heard(1s), Lines{"closed slow"});
}

TEST_F(ItemOpenerTest, IsNotEndedByTheTargetOrVelkoOrNobodyBecomingActive) {
    open("a");
    heard(1s);
    mac.activate(target);
    mac.activate(mac.processes.ownPID());
    mac.workspace.tell({.kind = WorkspaceNotice::Kind::activated});
    EXPECT_EQ(heard(1s), Lines{});
}

TEST_F(ItemOpenerTest, SupersedesAnOpeningThatWaitsAndThatOneStillEndsByItself) {
    open("a");
    heard(100ms);
    open("b");
    EXPECT_EQ(heard(60ms), Lines{"open a: press ok"});
    EXPECT_EQ(heard(100ms), Lines{"open b: press ok"}) << "the menu of a has closed";
    EXPECT_EQ(mac.registered().elementObservers, 1U);
    mac.closeMenu();
    EXPECT_EQ(heard(1s), Lines{"closed b"});

    open("a");
    opener->cancel();
    EXPECT_EQ(heard(1s), Lines{"open a: press ok"});
    mac.activate(other);
    EXPECT_EQ(heard(1s), Lines{"another app became active (b), ending open"});
    EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
}

/// Refuses to make observers.
class Unobservable final : public ForwardingAccessibility {
 public:
    using ForwardingAccessibility::ForwardingAccessibility;

    [[nodiscard]] std::unique_ptr<AXObserver> observe(ProcessID /*pid*/, Uptime /*messagingTimeout*/,
                                                      NotificationHandler /*handler*/) override {
        return nullptr;
    }
};

TEST_F(ItemOpenerTest, GoesOnWithoutAnObserverUntilTheTimeIsUp) {
    Unobservable unobservable(mac.accessibility);
    const Platform real = mac.platform();
    opener.emplace(Platform{real.mainThread, unobservable, real.workspace, real.displays, real.pointer,
                            real.processes, real.windows, real.privateFramework, real.activity});
    open("a");
    EXPECT_EQ(heard(1s), Lines{"open a: press ok"});
    mac.closeMenu();
    EXPECT_EQ(heard(59s), Lines{});
    EXPECT_EQ(heard(1s), (Lines{"open a: no menu-closed notification, ending", "closed a"}));
    opener.reset();
}

TEST_F(ItemOpenerTest, MayBeginAnewFromWithinItsOwnReport) {
    opener->open({.bundleID = "c", .log = [](const auto&) {}, .onClose = [this] { open("a"); }});
    EXPECT_EQ(heard(1s), Lines{"open a: press ok"});
    mac.closeMenu();
    EXPECT_EQ(heard(1s), Lines{"closed a"});
}

TEST_F(ItemOpenerTest, LeavesNothingBehindWheneverItIsDestroyed) {
    for (const auto after : {0ms, 149ms, 150ms, 200ms, 59000ms}) {
        opener.emplace(mac.platform());
        open("b");
        mac.advance(50ms);
        open("a");
        mac.advance(after);
        opener.reset();
        EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
        lines.clear();
        EXPECT_EQ(heard(61s), Lines{});
    }
    // It is destroyed within each of its callbacks: three log lines and the report.
    for (int moment = 0; moment < 6; ++moment) {
        mac.closeMenu();
        mac.activate(target);
        opener.emplace(mac.platform());
        int calls = 0;
        const auto call = [&] {
            if (++calls == moment % 3 + 1) {
                opener.reset();
            }
        };
        opener->open({"a", [&](const auto&) { call(); }, call});
        mac.advance(1s);
        moment < 3 ? mac.activate(other) : mac.advance(60s);
        mac.advance(1s);
        EXPECT_FALSE(opener) << moment;
        EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
    }
    opener.emplace(mac.platform());
    opener->open({"c", [&](const auto&) { opener.reset(); }, [] { ADD_FAILURE(); }});
    EXPECT_FALSE(opener);
}

}  // namespace
}  // namespace velko
