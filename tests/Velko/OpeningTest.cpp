#include "Simulator/Desktop/SimulatedScreen.h"
#include "Velko/Flows/Preferences.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class OpeningTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        app = launch("com.example.buried", Section::buried);
        other = launch("com.example.other", Section::buried);
        start();
    }

    ProcessID app = 0;
    ProcessID other = 0;
};

TEST_F(OpeningTest, LetsABuriedAppOutWhileItsMenuIsOpen) {
    velko->open("com.example.buried");
    pass(1s);
    EXPECT_TRUE(shows("com.example.buried"));
    EXPECT_FALSE(shows("com.example.other"));
    EXPECT_EQ(mac.windows.menuOwner(), app);
    EXPECT_TRUE(
        logged("[reveal] peek com.example.buried: collapsed -> opening com.example.buried (from collapsed)"));
    EXPECT_TRUE(logged("[open] open com.example.buried: press ok"));
    EXPECT_EQ(values().layout.clickDays.at("com.example.buried").size(), 1U) << "counts as a click";
    pass(20s);
    mac.closeMenu();
    pass(1s);
    EXPECT_FALSE(shows("com.example.buried"));
    EXPECT_TRUE(logged("[reveal] peekEnded: opening com.example.buried (from collapsed) -> collapsed"));
    expectSettled();
}

TEST_F(OpeningTest, WaitsForTheNewestAppOnly) {
    velko->open("com.example.buried");
    pass(1s);
    velko->open("com.example.other");
    pass(1s);
    EXPECT_FALSE(shows("com.example.buried"));
    EXPECT_TRUE(shows("com.example.other"));
    EXPECT_EQ(mac.windows.menuOwner(), other);
    mac.closeMenu();
    pass(1s);
    EXPECT_EQ(values().state, RevealState::collapsed());
}

TEST_F(OpeningTest, GivesUpOnAnAppThatIsGone) {
    mac.quit(app);
    velko->open("com.example.buried");
    EXPECT_EQ(values().state, RevealState::collapsed());
    EXPECT_TRUE(logged("[open] open com.example.buried: app not running"));
}

TEST_F(OpeningTest, ComesBackToWhatWasRevealed) {
    velko->preferences().setReveal({.autoTuckSeconds = 10});
    velko->toggle();
    velko->open("com.example.buried");
    pass(30s);
    EXPECT_TRUE(values().state.isRevealed()) << "a peek is not tucked";
    mac.closeMenu();
    pass(9s);
    EXPECT_EQ(values().state, RevealState::revealed());
    pass(2s);
    EXPECT_EQ(values().state, RevealState::collapsed()) << "the time starts anew";
}

}  // namespace
}  // namespace velko
