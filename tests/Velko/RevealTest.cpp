#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Machine/SimulatedSession.h"
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
    pass(1100ms);
    EXPECT_FALSE(shows("com.example.tucked"));
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

TEST_F(RevealTest, UsesTheStyleOfTheDisplayThatHoldsTheBroom) {
    mac.setDisplays({SimulatedDisplays::notched()});
    start();
    EXPECT_EQ(values().activeStyle, RevealStyle::shelf);
    velko->toggle();
    pass(1s);
    EXPECT_FALSE(shows("com.example.tucked")) << "the shelf shows it, not the bar";
    velko->toggle();
    mac.setDisplays({SimulatedDisplays::plain()});
    velko->toggle();
    pass(1s);
    EXPECT_TRUE(shows("com.example.tucked"));
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

}  // namespace
}  // namespace velko
