#include <cstdint>
#include <string>

#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Velko/Flows/Preferences.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

/// A Mac with 25 apps at which nobody does anything. Only counts are compared, so that a slow machine tests
/// the same.
class RestTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        layout.hasCompletedSetup = true;
        for (int number = 0; number < 25; ++number) {
            const Section section = allSections.at(static_cast<std::size_t>(number) % allSections.size());
            launch("app" + std::to_string(number), section);
            tucked += section == Section::tucked ? 1 : 0;
        }
        start();
        pass(5min);
    }

    SimulatedMac::Cost costOf(MainThread::Uptime duration) {
        const auto before = mac.cost();
        pass(duration);
        const auto after = mac.cost();
        return {.bursts = after.bursts - before.bursts,
                .accessibilityMessages = after.accessibilityMessages - before.accessibilityMessages};
    }
    /// Whether a tucked app that shows something new pops out.
    bool popsOut() {
        pass(6min);  // nothing pops out twice in five minutes
        mac.changeIcon(pid, 0, [](SimulatedIcon& icon) { icon.title = icon.title.value_or("") + "!"; });
        pass(5s);
        return shows("late");
    }
    void launchLate() {
        velko->place("late", Section::tucked);
        pid = launch("late");
        pass(1min);
    }

    Subscription awake = mac.activity.begin("no nap, which would make Velko look cheaper than it is");
    std::uint64_t tucked = 0;
    ProcessID pid = 0;
};

TEST_F(RestTest, SharesItsWakeUpsAndAsksOnlyTuckedApps) {
    const auto everything = costOf(1h);
    EXPECT_LE(everything.bursts, 1980U) << "0.55 a second";
    const std::uint64_t looks = 1800;
    const std::uint64_t lists = 120;  // an app is asked for its icons once a minute, in two messages
    EXPECT_LE(everything.accessibilityMessages, tucked * (looks + lists)) << "one message per icon and look";
    velko->preferences().setSwitch(Switch::popOutOnChange, false);
    const auto quiet = costOf(1h);
    EXPECT_LE(quiet.bursts, 361U) << "0.1 a second, and the autopilot";
    EXPECT_LE(quiet.accessibilityMessages, 120U) << "one other app is asked twice a minute";
}

TEST_F(RestTest, DoesNothingWhileNobodyIsAtTheMac) {
    launchLate();
    const auto expectRest = [this](const char* when) {
        SCOPED_TRACE(when);
        pass(15s);  // what has begun ends: a pop-out, a scan
        const auto cost = costOf(1h);
        EXPECT_EQ(cost.bursts, 0U);
        EXPECT_EQ(cost.accessibilityMessages, 0U);
    };
    mac.session.sleepDisplays();
    expectRest("the displays sleep");
    mac.session.wakeDisplays();
    EXPECT_TRUE(popsOut());
    mac.session.leaveToOther();
    expectRest("another user is there");
    mac.session.sleepDisplays();
    mac.session.wakeDisplays();
    expectRest("the other user's displays wake");
    mac.session.returnToUser();
    EXPECT_TRUE(popsOut());
    mac.session.sleepDisplays();
    mac.click({.x = 300, .y = 500});
    EXPECT_TRUE(popsOut()) << "who clicks is there, whatever was told";
}

/// A Mac on which Velko does not run yet.
class StartCostTest : public VelkoOnMac {};

TEST_F(StartCostTest, AsksFortyAppsAHandfulOfThingsEach) {
    layout.hasCompletedSetup = true;
    for (int number = 0; number < 40; ++number) {
        launch("app" + std::to_string(number),
               allSections.at(static_cast<std::size_t>(number) % allSections.size()));
    }
    const auto before = mac.cost().accessibilityMessages;
    std::uint64_t asked = 0;
    const Task beforeTheFirstLookForChanges =
        mac.mainThread.after(1s, [&] { asked = mac.cost().accessibilityMessages - before; });
    start();
    EXPECT_GE(values().items.size(), 40U);
    EXPECT_GE(asked, 40U);
    EXPECT_LE(asked, 250U);
}

TEST_F(RestTest, LooksAtTheIconsThatAnAppHasNow) {
    launchLate();
    ASSERT_TRUE(popsOut());
    pass(6min);
    mac.removeIcon(pid, 0);
    mac.addIcon(pid, {.title = "another"});
    pass(5s);
    EXPECT_TRUE(shows("late")) << "the old one is gone, and the new one shows something else";
    pass(6min);
    mac.addIcon(pid, {.title = "second"});
    pass(2min);
    EXPECT_FALSE(shows("late")) << "one more is no change of what was there";
    mac.changeIcon(pid, 1, [](SimulatedIcon& icon) { icon.title = "2"; });
    pass(5s);
    EXPECT_TRUE(shows("late"));
}

}  // namespace
}  // namespace velko
