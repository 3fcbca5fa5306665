#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Watching/ClickHistory.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Apps = std::vector<BundleID>;

TEST(MenuBarStrip, LiesAtTheTopOfWhateverScreenAClickIsOn) {
    const Display desk = SimulatedDisplays::plain();                // 1920 x 1080, bar of 24
    const Display above = SimulatedDisplays::notched({200, 1080});  // 1512 x 982, bar of 38
    const Display left = SimulatedDisplays::plain({-1280, 100}, {1280, 800});
    Display barless = SimulatedDisplays::plain({1920, 0});  // its bar hides itself
    barless.visibleFrame = barless.frame;
    const struct {
        std::vector<Display> displays;
        Point click;
        bool counts;
    } cases[] = {
        {{}, {5, 5}, false},
        {{desk}, {1919.5, 24}, true},
        {{desk}, {5, 24.5}, false},
        {{desk}, {1920, 5}, false},
        {{desk, above}, {300, 0}, true},     // the top edge of the lower screen
        {{desk, above}, {300, -1}, false},   // the bottom of the upper one
        {{desk, above}, {300, -944}, true},  // beside the camera housing
        {{desk, above}, {300, -943}, false},
        {{desk, above}, {100, -982}, false},  // no screen is there
        {{desk, left}, {-1, 204}, true},      // its top is 180 lower than the primary one's
        {{desk, left}, {-1, 205}, false},
        {{left, desk}, {-1, 0}, true},        // now the primary one's top is the origin
        {{desk, barless}, {1920, 22}, true},  // still as high as the status bar
        {{desk, barless}, {1920, 23}, false},
    };
    for (const auto& [displays, click, counts] : cases) {
        EXPECT_EQ(MenuBarStrip::contains(displays, 22, click), counts) << click.x << " " << click.y;
    }
    EXPECT_TRUE(MenuBarStrip::contains({barless}, 40, {1920, 40})) << "the thickest of the three counts";
}

TEST(MenuBarStrip, ShowsWhatStandsInABarBesideTheCameraHousing) {
    const std::vector<Display> displays{SimulatedDisplays::notched(), SimulatedDisplays::plain({1512, -98})};
    const auto shows = [&](double x, double y, double width = 28, double height = 24) {
        return MenuBarStrip::shows(displays, 24, {.x = x, .y = y, .width = width, .height = height});
    };
    EXPECT_TRUE(shows(1000, 3));
    EXPECT_TRUE(shows(600, 0));
    EXPECT_FALSE(shows(742, 0)) << "under the housing";
    EXPECT_FALSE(shows(-1, 0)) << "not placed";
    EXPECT_FALSE(shows(1500, 0)) << "on two screens";
    EXPECT_TRUE(shows(1600, 0));
    EXPECT_FALSE(shows(1000, 40)) << "below the bar";
    EXPECT_FALSE(shows(1000, 0, 0, 0));
}

class ClickHistoryTest : public testing::Test {
 protected:
    ClickHistoryTest() { mac.setHitsEndAtHost(false); }
    ~ClickHistoryTest() override {
        history.reset();
        mac.advance(1s);
        EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
    }

    ProcessID launch(const BundleID& bundleID) {
        return mac.launch({.bundleID = bundleID, .name = "App", .icons = {{}}});
    }

    [[nodiscard]] Rect frameOf(ProcessID pid) const {
        return std::ranges::find(mac.menuBar().slots(), pid, &SimulatedMenuBar::Slot::pid)->frame;
    }

    Apps clickedAfter(MainThread::Uptime duration) {
        mac.advance(duration);
        return std::exchange(clicked, {});
    }

    SimulatedMac mac;
    Apps clicked;
    KnownBar known;
    std::optional<ClickHistory> history{std::in_place, mac.platform(), [this] { return known; },
                                        [this](const BundleID& app) { clicked.push_back(app); }};
};

TEST_F(ClickHistoryTest, ReportsWhoseIconWasClicked) {
    const ProcessID a = launch("a");
    history->start();
    history->start();
    EXPECT_EQ(mac.pointer.taps(), 1U);
    for (const ProcessID pid : {a, launch(""), mac.processes.ownPID(), mac.menuBarHost(), a}) {
        EXPECT_TRUE(mac.clickIcon(pid));
    }
    mac.click({500, 5});    // nothing is there
    mac.click({500, 500});  // the desktop
    EXPECT_EQ(clickedAfter(1s), (Apps{"a", "a"}));
    const auto messages = mac.cost().accessibilityMessages;
    mac.windows.others.insert(
        mac.windows.others.begin(),
        {.layer = 25, .ownerPID = mac.processes.ownPID(), .frame = Rect{.width = 1920, .height = 24}});
    mac.clickIcon(a);
    EXPECT_EQ(clickedAfter(1s), Apps{}) << "it is covered by a window of Velko's";
    EXPECT_EQ(mac.cost().accessibilityMessages, messages) << "which is not asked on another thread";
    mac.windows.others.erase(mac.windows.others.begin());
    mac.hang(a, true);
    mac.clickIcon(a);
    mac.clickIcon(launch("b"));
    EXPECT_EQ(clickedAfter(1s), Apps{"b"}) << "a hung app's click is lost and holds up nobody's";
    mac.clickIcon(launch("c"));
    mac.advance(0s);
    mac.quit(a);
    EXPECT_EQ(clickedAfter(1s), Apps{"c"});
}

TEST_F(ClickHistoryTest, FindsTheOwnerWhereTheBarsHostAnswersForAllIcons) {
    mac.setHitsEndAtHost(true);
    const ProcessID a = launch("a");
    const ProcessID b = launch("b");
    history->start();
    mac.clickIcon(a);
    EXPECT_EQ(clickedAfter(1s), Apps{}) << "no icon is known yet";
    known.icons = {{a, {.x = 100, .width = 30}}, {b, frameOf(a)}};  // before icons moved
    mac.clickIcon(a);
    mac.clickIcon(b);
    mac.clickIcon(mac.menuBarHost());
    EXPECT_EQ(clickedAfter(1s), (Apps{"a", "b"})) << "by where the icons stand now";
    mac.setHitsEndAtHost(false);
    known.broom = frameOf(mac.processes.ownPID());
    mac.clickIcon(mac.processes.ownPID());
    EXPECT_EQ(clickedAfter(1s), Apps{});
    EXPECT_EQ(mac.accessibility.ownAnswersElsewhere(), 0U)
        << "the window list does not name the broom's owner";
}

TEST_F(ClickHistoryTest, ListensWithThePermissionUntilStoppedWhoeverElseSwitchesItsTapOff) {
    const ProcessID a = launch("a");
    mac.pointer.refusesTaps = true;
    history->start();
    EXPECT_FALSE(history->isRunning());
    mac.pointer.refusesTaps = false;
    history->start();
    EXPECT_TRUE(history->isRunning());
    mac.clickIcon(a);
    mac.clickIcon(a);
    mac.advance(0s);
    history->stop();
    mac.clickIcon(a);
    EXPECT_EQ(clickedAfter(1s), Apps{}) << "clicks that wait are forgotten";
    EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
    history->start();
    mac.pointer.disableTaps();
    mac.clickIcon(a);
    EXPECT_EQ(clickedAfter(1s), Apps{});
    mac.clickIcon(a);
    EXPECT_EQ(clickedAfter(1s), Apps{"a"}) << "the system's own switching off is undone";
    mac.pointer.disableTaps(true);
    mac.advance(1s);
    EXPECT_FALSE(history->isRunning()) << "this one was in vain";
    history->start();
    mac.clickIcon(a);
    EXPECT_EQ(clickedAfter(1s), Apps{"a"});
}

TEST_F(ClickHistoryTest, SurvivesAThousandClicksASecond) {
    const ProcessID slow = launch("slow");
    const ProcessID last = launch("last");
    mac.accessibility.setDelay(slow, 49900us);  // with the message, each hit-test takes 50 ms
    mac.accessibility.setDelay(last, 49900us);
    history->start();
    const auto began = mac.mainThread.now();
    for (int click = 1; click <= 1000; ++click) {
        mac.clickIcon(click <= 1000 - 32 ? slow : last);
        mac.advance(1ms);
    }
    EXPECT_EQ(mac.mainThread.now() - began, 1s) << "no click is held up";
    EXPECT_EQ(clickedAfter(0s), Apps(20, "slow"));
    EXPECT_EQ(mac.accessibility.messages(), 21U) << "one hit-test at a time, and the next has begun";
    EXPECT_EQ(clickedAfter(1min), Apps(32, "last")) << "the newest 32 have waited";
}

TEST_F(ClickHistoryTest, MayBeDestroyedAtAnyMoment) {
    const ProcessID a = launch("a");
    for (const int turns : {0, 1, 2, 3}) {
        history.emplace(
            mac.platform(), [] { return KnownBar(); },
            [&](const BundleID&) { turns == 3 ? history.reset() : history->stop(); });
        history->start();
        mac.clickIcon(a);
        mac.clickIcon(a);
        for (int turn = 0; turn < turns; ++turn) {
            mac.advance(turn * 1s);
        }
        EXPECT_EQ(history.has_value(), turns != 3);
        history.reset();
        mac.advance(1s);
        EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
    }
}

}  // namespace
}  // namespace velko
