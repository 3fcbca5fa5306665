#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class NewIconsTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        launch("com.example.tucked", Section::tucked);
        layout.hasCompletedSetup = true;
        layout.seenApps = BundleIDs{"com.example.tucked"};
    }
};

TEST_F(NewIconsTest, WaitTuckedUntilTheUserSaysWhereTheyGo) {
    start();
    launch("com.example.new");
    pass(1s);
    EXPECT_FALSE(shows("com.example.new"));
    EXPECT_TRUE(logged("[inbox] new icons, tucked until answered: com.example.new"));
    EXPECT_EQ(saved().inbox, std::vector<BundleID>{"com.example.new"}) << "saved at once";
    EXPECT_TRUE(velko->note().isAnythingToAsk());
    velko->place("com.example.new", Section::bar);
    pass(1s);
    EXPECT_TRUE(shows("com.example.new"));
    EXPECT_TRUE(logged("[layout] com.example.new -> bar (new icon answered)"));
    EXPECT_TRUE(logged("[engine] applied (section changed) in 40 ms: "));
    EXPECT_TRUE(saved().inbox.empty());
    EXPECT_FALSE(velko->note().isAnythingToAsk());
    velko->place("com.example.new", Section::buried);
    EXPECT_TRUE(log.lines().back().ends_with("[layout] com.example.new -> buried"));
}

TEST_F(NewIconsTest, WaitInTheBarWhereTheUserPrefersThat) {
    start();
    launch("com.example.first");
    pass(1s);
    velko->preferences().setSwitch(Switch::leaveNewIconsOut, true);
    pass(1s);
    EXPECT_TRUE(shows("com.example.first")) << "who waits already waits there, too";
    EXPECT_TRUE(logged("[settings] leave new icons out true"));
    launch("com.example.second");
    pass(1s);
    EXPECT_TRUE(shows("com.example.second"));
    EXPECT_TRUE(logged("[inbox] new icons, out until answered: com.example.second"));
    EXPECT_TRUE(velko->note().isAnythingToAsk()) << "they are asked about all the same";
    velko->place("com.example.first", Section::bar);
    velko->preferences().setSwitch(Switch::leaveNewIconsOut, false);
    pass(1s);
    EXPECT_TRUE(shows("com.example.first")) << "this one is answered";
    EXPECT_FALSE(shows("com.example.second"));
    EXPECT_EQ(saved().inbox, std::vector<BundleID>{"com.example.second"});
}

TEST_F(NewIconsTest, AreAskedAboutAgainOnlyWhenAnotherComes) {
    start();
    launch("com.example.new");
    pass(1s);
    EXPECT_FALSE(values().noteDeferred);
    velko->note().noteClosed();
    EXPECT_TRUE(values().noteDeferred);
    launch("com.example.newer");
    pass(1s);
    EXPECT_FALSE(values().noteDeferred);
    velko->place("com.example.new", Section::tucked);
    velko->place("com.example.newer", Section::tucked);
    velko->note().noteClosed();
    EXPECT_FALSE(values().noteDeferred) << "nothing is left";
}

TEST_F(NewIconsTest, AreNotWrittenOverALayoutThatCannotBeRead) {
    write("broken");
    startWithFileAsItIs();
    launch("com.example.new");
    pass(1h);
    velko->open("com.example.new");
    pass(1h);
    EXPECT_EQ(contentOf(file()), "broken");
    EXPECT_FALSE(logged("[autopilot] click history started"));
    ASSERT_TRUE(LayoutStore(file()).save(layout));
    velko->loadLayout();
    EXPECT_EQ(timesLogged("[autopilot] click history started"), 1);
}

}  // namespace
}  // namespace velko
