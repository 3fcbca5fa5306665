#include "Simulator/Desktop/SimulatedScreen.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/ShowApp.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

const Size wideSize{.width = 3440, .height = 1440};

/// Nothing shall be hidden on displays of 2,560 points or more.
class WideDisplayTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        layout.showAllFromWidth = 2560;
        launch("app.tucked", Section::tucked);
        launch("app.buried", Section::buried);
    }

    void startCounting() {
        start();
        wasShown = shows("app.tucked");
        mac.onMenuBarChange = [this] {
            watchForGap();
            turns += std::exchange(wasShown, shows("app.tucked")) == wasShown ? 0 : 1;
        };
    }

    /// Plugs displays in or out, and says how often the tucked icon came or went.
    int arrange(std::vector<Display> displays) {
        turns = 0;
        mac.setDisplays(std::move(displays));
        pass(5s);
        expectSettled();
        return turns;
    }

    const Display laptop = SimulatedDisplays::notched();
    const Display wide = SimulatedDisplays::plain({}, wideSize);
    bool wasShown = false;
    int turns = 0;
};

TEST_F(WideDisplayTest, HidesNothingWhileTheBroomIsThere) {
    mac.setDisplays({laptop});
    startCounting();
    EXPECT_FALSE(shows("app.tucked"));
    EXPECT_EQ(arrange({laptop, SimulatedDisplays::plain({1512, 0}, wideSize)}), 0) << "the broom stays";
    EXPECT_EQ(arrange({wide, SimulatedDisplays::notched({3440, 0})}), 1) << "it has moved";
    EXPECT_TRUE(shows("app.tucked") && shows("app.buried"));
    EXPECT_EQ(values().tidiedCount, 0U);
    EXPECT_TRUE(logged("[reveal] the broom is on a wide display: nothing is hidden there"));
    EXPECT_EQ(arrange({wide}), 0) << "the lid is closed";
    EXPECT_EQ(arrange({}), 1) << "no display is wide";
    EXPECT_EQ(arrange({wide}), 1);
    EXPECT_EQ(arrange({SimulatedDisplays::plain({}, {1512, 982})}), 1) << "it mirrors the laptop now";
    EXPECT_EQ(arrange({SimulatedDisplays::plain({}, {2559, 1440})}), 0);
    EXPECT_EQ(arrange({SimulatedDisplays::plain({}, {2560, 1440})}), 1);
    EXPECT_EQ(arrange({laptop}), 1);
    EXPECT_FALSE(shows("app.tucked"));
}

TEST_F(WideDisplayTest, HidesNothingFromTheFirstMoment) {
    mac.setDisplays({wide});
    startCounting();
    EXPECT_EQ(mac.cost().engineCalls, 0U);
    velko->toggle();
    velko->toggle(true);
    pass(1s);
    EXPECT_EQ(values().state, RevealState::collapsed()) << "there is nothing to bring out";
    velko->showMe().start("app.tucked");
    pass(1s);
    EXPECT_TRUE(shows("app.tucked") && !shows("app.buried")) << "the user looks for one icon";
    pass(3s);
    EXPECT_TRUE(shows("app.buried"));
    velko->open("app.tucked");
    pass(1s);
    EXPECT_NE(values().state.asPeeking(), nullptr) << "its menu opens as anywhere";
    velko->toggle();
    EXPECT_EQ(values().state, RevealState::collapsed());
}

TEST_F(WideDisplayTest, FollowsTheSettingAtOnceAndPresentingCountsForMore) {
    layout.showAllFromWidth.reset();
    layout.reveal.otherStyle = RevealStyle::shelf;
    mac.setDisplays({wide});
    startCounting();
    EXPECT_FALSE(shows("app.tucked"));
    velko->toggle();
    pass(1s);
    EXPECT_TRUE(values().isShelfShown());
    velko->pinShelf(true);
    velko->preferences().setShowAllFromWidth(3440);
    pass(1s);
    EXPECT_TRUE(shows("app.buried"));
    EXPECT_FALSE(values().isShelfShown()) << "it would hold what is in the bar";
    pass(10s);
    EXPECT_EQ(values().state, RevealState::collapsed()) << "a pin holds nothing that is not there";
    velko->handle(RevealEvent::shareStarted());
    pass(1s);
    EXPECT_FALSE(shows("app.tucked"));
    EXPECT_FALSE(values().hidesNothing());
    velko->handle(RevealEvent::shareStopped());
    pass(1s);
    EXPECT_TRUE(shows("app.tucked"));
    velko->preferences().setShowAllFromWidth(3441);
    pass(1s);
    EXPECT_FALSE(shows("app.tucked"));
    velko->preferences().setShowAllFromWidth(0);
    EXPECT_EQ(saved().showAllFromWidth, std::nullopt);
    EXPECT_TRUE(logged("[settings] show everything on displays from 3441 points"));
}

TEST_F(WideDisplayTest, IgnoresAWrongWidthInTheFileAlone) {
    write(R"({"hasCompletedSetup": true, "sections": {"app.tucked": "tucked"}, "showAllFromWidth": "wide",
              "searchInMenu": 1})");
    mac.setDisplays({wide});
    startWithFileAsItIs();
    EXPECT_FALSE(shows("app.tucked"));
    EXPECT_TRUE(logged("[layout] ignored: showAllFromWidth: expected a whole number, found a text"));
    EXPECT_TRUE(logged("[layout] ignored: searchInMenu: expected true or false, found a number"));
}

}  // namespace
}  // namespace velko
