#include <array>
#include <utility>

#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/ShowApp.h"
#include "tests/Dice.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class RevealTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        app = launch("com.example.tucked", Section::tucked);
        launch("com.example.buried", Section::buried);
    }

    ProcessID app = 0;
};

TEST_F(RevealTest, BringsTuckedIconsBackAndTucksThemAfterAWhile) {
    start();
    velko->toggle();
    pass(1s);
    EXPECT_TRUE(shows("com.example.tucked"));
    EXPECT_FALSE(shows("com.example.buried"));
    EXPECT_TRUE(logged("[reveal] toggle: collapsed -> revealed"));
    pass(4900ms);
    EXPECT_TRUE(shows("com.example.tucked"));
    pass(200ms);
    EXPECT_FALSE(shows("com.example.tucked"));
    EXPECT_TRUE(logged("[reveal] autoTuck: revealed -> collapsed"));
    expectSettled();
}

TEST_F(RevealTest, NeverTucksWhileAMenuIsOpen) {
    start();
    velko->toggle();
    pass(1s);
    mac.openMenu(app);
    pass(60s);
    EXPECT_TRUE(shows("com.example.tucked"));
    mac.closeMenu();
    const ProcessID own = mac.processes.ownPID();
    mac.windows.others = {
        {.layer = 102, .ownerPID = app}, {.layer = 100, .ownerPID = app}, {.layer = 101, .ownerPID = own}};
    pass(1100ms);
    EXPECT_FALSE(shows("com.example.tucked")) << "none of these is another's menu";
}

TEST_F(RevealTest, EndsTuckedWhenUndoneWhileItsActivationIsUnderWay) {
    start();
    velko->toggle();
    pass(10ms);
    velko->toggle();
    pass(1s);
    EXPECT_FALSE(shows("com.example.tucked"));
    expectSettled();
}

TEST_F(RevealTest, AppliesAgainAfterTheEnvironmentChangedAndDoesNothingWhenNothingDid) {
    start();
    const auto calls = mac.cost().engineCalls;
    const auto lines = log.lines().size();
    velko->apply({.reason = "again"});
    pass(1s);
    EXPECT_EQ(mac.cost().engineCalls, calls);
    EXPECT_EQ(log.lines().size(), lines);
    const auto change = velko->lastHidingChange();
    mac.session.sleepAndWake(8h);
    pass(5s);
    EXPECT_TRUE(logged("[system] wake"));
    EXPECT_TRUE(logged("[system] wake settled"));
    EXPECT_GT(mac.cost().engineCalls, calls);
    EXPECT_GT(velko->lastHidingChange(), change);
}

/// Icons brought out and put away in any order, on any display, with more or less to hide. Who should show is
/// told a second time, app by app.
class RevealsInAnyOrder : public VelkoOnMac, public testing::WithParamInterface<unsigned> {
 protected:
    void SetUp() override {
        layout.reveal.autoTuckSeconds = 0;
        chooseStyles();
        for (const BundleID& app : apps) {
            layout.place(app, dice.oneOf(allSections));
            if (!dice.isOneIn(4)) {
                launch(app);
            }
        }
        rearrange();
        start();
        style = styleHere();
    }

    void chooseStyles() {
        constexpr std::array styles{RevealStyle::inline_, RevealStyle::shelf};
        layout.reveal.notchedStyle = dice.oneOf(styles);
        layout.reveal.otherStyle = dice.oneOf(styles);
    }
    /// The broom stays on the first display.
    void rearrange() {
        rest = 3100ms;
        isNotched = dice.isOneIn(2);
        const auto notched = [](Point origin) { return SimulatedDisplays::notched(origin); };
        std::vector<Display> displays{isNotched ? notched({}) : SimulatedDisplays::plain()};
        if (dice.isOneIn(2)) {
            displays.push_back(isNotched ? SimulatedDisplays::plain({1512, 0}) : notched({1920, 0}));
        }
        mac.setDisplays(displays);
    }
    [[nodiscard]] RevealStyle styleHere() const {
        return isNotched ? layout.reveal.notchedStyle : layout.reveal.otherStyle;
    }
    [[nodiscard]] bool runs(const BundleID& app) const { return !mac.workspace.pids(app).empty(); }

    /// 0: only the bar; 1: what is tucked too; 2: what is buried too.
    void bringOut(int reach) {
        if (out == 0 && reach > 0) {
            style = styleHere();
        }
        out = reach;
        opened.clear();
    }
    void toggle(bool withBuried) {
        const int most = withBuried ? 2 : 1;
        const bool isOut = !opened.empty() || (withBuried ? out == 2 : out > 0);
        bringOut(isOut ? 0 : most);
        velko->toggle(withBuried);
    }
    void show(const BundleID& app) {
        if (alone.empty()) {
            alone = app;
            aloneUntil = mac.mainThread.now() + 3s;
            velko->showMe().start(app);
        } else {
            alone.clear();
            EXPECT_TRUE(velko->consumesClick());
        }
    }
    void comeOrGo(const BundleID& app) {
        if (runs(app)) {
            mac.quit(mac.workspace.pids(app).front());
        } else {
            launch(app);
        }
    }

    /// Something that may happen, and whether it makes Velko apply its plan.
    bool happen() {
        const BundleID app = dice.oneOf(apps);
        switch (dice.roll(13)) {
            case 0:
            case 1: toggle(false); return true;
            case 2:
            case 3: toggle(true); return true;
            case 4:
                if (opened.empty()) {
                    bringOut(0);
                }
                velko->handle(RevealEvent::autoTuck());
                return true;
            case 5:
                opened = app;
                velko->handle(RevealEvent::peek(app));
                return true;
            case 6:
                opened.clear();
                velko->handle(RevealEvent::peekEnded());
                return true;
            case 7:
                layout.place(app, dice.oneOf(allSections));
                velko->place(app, layout.section(app));
                return true;
            case 8: rearrange(); return true;
            case 9:
                chooseStyles();
                velko->preferences().setReveal(layout.reveal);
                return false;
            case 10: comeOrGo(app); return isTrusted;
            case 11: show(app); return true;
            default:
                isTrusted = !isTrusted;
                rest = isTrusted ? 3100ms : 10'100ms;  // nobody waits for the loss
                isTrusted ? mac.grantTrust() : mac.revokeTrust();
                return true;
        }
    }

    [[nodiscard]] bool shouldShow(const BundleID& app) const {
        if (!isTrusted || isAllShown) {
            return true;
        }
        if (!alone.empty()) {
            return app == alone;
        }
        const bool isInBar = style == RevealStyle::inline_;
        const Section section = layout.section(app);
        return section == Section::bar || app == opened || (isInBar && out == 2) ||
               (isInBar && out == 1 && section == Section::tucked);
    }
    void check() {
        std::size_t hidden = 0;
        for (const BundleID& app : apps) {
            if (runs(app)) {
                EXPECT_EQ(shows(app), shouldShow(app)) << app;
                hidden += shouldShow(app) ? 0 : 1;
            }
        }
        EXPECT_EQ(values().tidiedCount, hidden);
        EXPECT_EQ(values().isShelfShown(), style == RevealStyle::shelf && out > 0);
        if (!isAllShown) {
            expectSettled();
        }
    }

    const std::vector<BundleID> apps{"app.a", "app.b", "app.c", "app.d", "app.e"};
    Dice dice{GetParam()};
    bool isNotched = false;
    bool isTrusted = true;
    bool isAllShown = false;
    RevealStyle style = RevealStyle::inline_;
    int out = 0;
    BundleID opened;
    BundleID alone;
    MainThread::Uptime aloneUntil{0};
    std::chrono::milliseconds rest = 1100ms;  ///< until everything has been noticed and done
};

TEST_P(RevealsInAnyOrder, ShowWhoShouldShowAndNobodyElse) {
    for (int step = 0; step < 60 && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step) + "\n" + log.text().substr(log.text().rfind('\n') + 1));
        if (dice.isOneIn(12)) {
            isAllShown = isTrusted;
            velko->showAll();
        } else if (happen()) {
            isAllShown = false;
        }
        pass(std::exchange(rest, 1100ms));
        if (!alone.empty() && mac.mainThread.now() >= aloneUntil) {
            alone.clear();
            isAllShown = false;
        }
        check();
    }
}

INSTANTIATE_TEST_SUITE_P(Seed, RevealsInAnyOrder, testing::Range(1U, 13U));

}  // namespace
}  // namespace velko
