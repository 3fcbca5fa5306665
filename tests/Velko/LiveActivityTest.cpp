#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Velko/Flows/Preferences.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

/// A Mac whose iPhone shows a Live Activity when the test says so.
class LiveActivityTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        launch("com.example.tucked", Section::tucked);
        renderer = mac.launch({.name = "WidgetRenderer_Activities", .isApplication = false});
        start();
        pass(10s);
    }

    void runActivity() {
        mac.processes.work(renderer, 0.01);
        pass(15s);
    }
    void endActivity() {
        mac.processes.work(renderer, 0);
        pass(220s);  // its work is forgotten after half a minute, and three minutes of quiet follow
    }

    [[nodiscard]] bool showsTucked() const { return shows("com.example.tucked"); }

    ProcessID renderer = 0;
};

TEST_F(LiveActivityTest, ShowsTheWholeBarAndTidiesWhenItIsOver) {
    EXPECT_FALSE(showsTucked());
    runActivity();
    EXPECT_TRUE(showsTucked());
    EXPECT_TRUE(logged("[liveactivity] iPhone Live Activity running: showing the whole bar"));
    endActivity();
    EXPECT_FALSE(showsTucked());
    EXPECT_TRUE(logged("[liveactivity] Live Activity over: tidying again"));
    EXPECT_TRUE(logged("applied (live activity over)"));
    expectSettled();
}

TEST_F(LiveActivityTest, GivesWayToAClickForAsLongAsItLastsAndEndsWithItsRenderer) {
    runActivity();
    velko->toggle();
    EXPECT_TRUE(logged("[liveactivity] broom clicked: tidying anyway until this activity ends"));
    pass(30s);
    EXPECT_TRUE(logged("applied (live activity dismissed)"));
    EXPECT_FALSE(showsTucked());
    velko->toggle();
    pass(1s);
    EXPECT_TRUE(showsTucked()) << "a second click reveals as usual";
    endActivity();
    runActivity();
    EXPECT_TRUE(showsTucked());
    mac.quit(renderer);
    pass(6s);
    EXPECT_FALSE(showsTucked()) << "over at once, with its renderer";
}

TEST_F(LiveActivityTest, CountsForNothingWhenTheUserDoesNotWantIt) {
    runActivity();
    velko->preferences().setSwitch(Switch::showLiveActivities, false);
    pass(1min);
    EXPECT_FALSE(showsTucked());
    velko->preferences().setSwitch(Switch::showLiveActivities, true);
    EXPECT_TRUE(showsTucked());
    Layout edited = values().layout;
    edited.showLiveActivities = false;
    ASSERT_TRUE(LayoutStore(file()).save(edited));
    velko->loadLayout();
    pass(500ms);
    EXPECT_FALSE(showsTucked()) << "also when the file says so";
}

}  // namespace
}  // namespace velko
