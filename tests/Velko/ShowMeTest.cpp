#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Flows/ShowApp.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class ShowMeTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        launch("com.example.bar", Section::bar);
        launch("com.example.buried", Section::buried);
    }
};

TEST_F(ShowMeTest, ShowsOneIconAloneForAMoment) {
    start();
    velko->showMe().start("com.example.buried");
    pass(1s);
    EXPECT_TRUE(shows("com.example.buried"));
    EXPECT_FALSE(shows("com.example.bar"));
    EXPECT_TRUE(logged("[showme] showing com.example.buried"));
    EXPECT_TRUE(logged("applied (show me com.example.buried)"));
    velko->showMe().start("com.example.buried");
    pass(2s);
    EXPECT_EQ(values().showingMe, "com.example.buried") << "its time starts anew";
    pass(1s);
    EXPECT_FALSE(shows("com.example.buried"));
    EXPECT_TRUE(shows("com.example.bar"));
    EXPECT_TRUE(logged("applied (show me done)"));
    expectSettled();
}

TEST_F(ShowMeTest, EndsWithAClickOnTheBroomWhichDoesNothingElse) {
    start();
    velko->showMe().start("com.example.buried");
    pass(1s);
    EXPECT_TRUE(velko->consumesClick());
    pass(1s);
    EXPECT_FALSE(shows("com.example.buried"));
    EXPECT_TRUE(logged("applied (show me stopped)"));
    EXPECT_FALSE(velko->consumesClick());
    EXPECT_TRUE(mac.activity.reasons().empty()) << "nobody waits for it any more";
    velko->showAll();
    pass(5s);
    EXPECT_TRUE(shows("com.example.buried")) << "its end comes only once";
}

TEST_F(ShowMeTest, GivesWayToAnAppThatIsOpened) {
    launch("com.example.tucked", Section::tucked);
    start();
    velko->showMe().start("com.example.buried");
    pass(1s);
    velko->open("com.example.tucked");
    pass(500ms);
    EXPECT_TRUE(shows("com.example.tucked")) << "its menu hangs from its icon";
    EXPECT_TRUE(mac.windows.menuOwner().has_value());
}

}  // namespace
}  // namespace velko
