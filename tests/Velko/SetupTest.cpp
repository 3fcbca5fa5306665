#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "VelkoCore/Time/Timing.h"
#include "tests/Velko/SetupOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

using SetupTest = SetupOfThreeApps;

TEST_F(SetupTest, GoesFromFirstLaunchToATidyBarByKeyboardAlone) {
    startSetup();
    EXPECT_EQ(step(), "setup:welcome");
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(step(), "setup:permission");
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(mac.accessibility.prompts(), 1);
    EXPECT_EQ(mac.workspace.openedURLs().size(), 1U);
    mac.grantTrust();
    pass(2s + 300ms);
    EXPECT_EQ(words("permission:state"), "Done. Thank you!");
    pass(Timing::permissionGuideDoneHold);
    EXPECT_EQ(mac.application.activations, 1) << "the settings are in front until then";
    EXPECT_EQ(card(), "1 of 3 vpn: Suggested by app type");
    EXPECT_EQ(words("sort:bar") + " / " + words("sort:tucked") + " / " + words("sort:buried"),
              "vpn: Keep in the Bar, proposed / vpn: Tuck / vpn: Bury");
    EXPECT_TRUE(press('2'));
    EXPECT_EQ(card(), "2 of 3 clock: Last clicked yesterday");
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(card(), "3 of 3 chat: Last clicked 40 days ago");
    EXPECT_TRUE(press(Key::leftArrow) && press(Key::leftArrow));
    EXPECT_EQ(card(), "1 of 3 vpn: Your choice before");
    EXPECT_TRUE(press('1') && press(Key::enter) && press('3'));
    EXPECT_EQ(words("summary:counts"), "1 in the bar, 1 tucked, 1 buried.");
    EXPECT_TRUE(shows("com.example.chat")) << "nothing happens before it is applied";
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(words("done:where"), "Right now every icon shows.") << "the system has not answered yet";
    pass(1s);
    EXPECT_EQ(step() + ": " + words("done:title"), "setup:done: Your menu bar is tidy");
    EXPECT_EQ(words("done:where"), "1 icon is behind the broom. Click it to see it.");
    EXPECT_EQ(words("done:else"), "Option-click it to see the buried one too.");
    EXPECT_TRUE(press(Key::enter));
    pass(1s);
    EXPECT_FALSE(setup->isShown());
    EXPECT_EQ(host.visibilityChanges, 2);
    EXPECT_TRUE(shows("com.example.vpn"));
    EXPECT_FALSE(shows("com.example.clock") || shows("com.example.chat"));
    EXPECT_EQ(saved().section("com.example.chat"), Section::buried);
    EXPECT_TRUE(saved().hasCompletedSetup);
    EXPECT_TRUE(logged("[setup] sorted: 1 in the bar, 1 tucked, 1 buried"));
    expectSettled();
}

TEST_F(SetupTest, GoesFromFirstLaunchToATidyBarByPointerAlone) {
    startSetup();
    EXPECT_TRUE(window().perform("welcome:go") && window().perform("setup:back"));
    EXPECT_EQ(step(), "setup:welcome");
    EXPECT_TRUE(window().perform("welcome:go"));
    mac.grantTrust();
    pass(3s);
    EXPECT_TRUE(window().perform("permission:go")) << "trusted without the guide";
    EXPECT_TRUE(window().perform("sort:buried") && window().perform("sort:rest"));
    EXPECT_EQ(words("summary:counts"), "0 in the bar, 1 tucked, 2 buried.");
    EXPECT_EQ(reading(*view::find(*window().content(), "summary:bar")),
              (std::vector<std::string>{"In the Bar", "No app"}));
    EXPECT_TRUE(window().perform("summary:over"));
    EXPECT_EQ(card(), "1 of 3 vpn: Suggested by app type") << "the answer is forgotten";
    EXPECT_TRUE(window().perform("sort:tucked"));
    EXPECT_TRUE(window().perform("sort:rest") && window().perform("summary:apply"));
    pass(1s);
    EXPECT_FALSE(shows("com.example.vpn"));
    EXPECT_EQ(saved().sections, (std::map<BundleID, Section>{{"com.example.chat", Section::buried},
                                                             {"com.example.clock", Section::tucked},
                                                             {"com.example.vpn", Section::tucked}}));
}

TEST_F(SetupTest, LosesAndChangesNothingWhenTheUserLeavesHalfWay) {
    startSorting();
    EXPECT_TRUE(press('3') && press('1'));
    close();
    EXPECT_EQ(host.visibilityChanges, 2);
    EXPECT_EQ(values().layout.sections, layout.sections);
    EXPECT_FALSE(values().layout.hasCompletedSetup || logged("[setup]"));
    EXPECT_TRUE(shows("com.example.vpn"));
    const auto wakeUps = mac.cost().wakeUps;
    mac.launch({.bundleID = "com.example.new", .name = "new", .icons = {{.title = "new"}}});
    pass(30s);
    EXPECT_LT(mac.cost().wakeUps - wakeUps, 50U) << "a closed window costs nothing";
    setup->show();
    EXPECT_EQ(card(), "1 of 4 new: Suggested by app type") << "what came since is asked first";
    EXPECT_TRUE(press('1'));
    EXPECT_EQ(card(), "2 of 4 vpn: Your choice before");
    EXPECT_TRUE(press('r') && press(Key::enter)) << "accepting the rest is no other answer";
    pass(1s);
    EXPECT_EQ(saved().section("com.example.vpn"), Section::buried);
    EXPECT_EQ(saved().section("com.example.clock"), Section::bar);
}

TEST_F(SetupTest, SaysWhyThereIsNothingToSort) {
    layout.hasCompletedSetup = true;
    startSetup();
    EXPECT_EQ(words("waiting:why"), "Velko can't look at your menu bar until you give it permission.");
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(mac.workspace.openedURLs().size(), 1U);
    mac.grantTrust();
    mac.hang(mac.workspace.pids("com.example.vpn").front(), true);
    pass(1s);
    EXPECT_EQ(words("waiting:why"), "Looking at your menu bar…");
    EXPECT_FALSE(press(Key::enter)) << "the cards come by themselves";
    pass(1s);
    EXPECT_EQ(card(), "1 of 2 clock: From your current layout");
    for (const char* app : {"com.example.vpn", "com.example.clock", "com.example.chat"}) {
        mac.quit(mac.workspace.pids(app).front());
    }
    close();
    setup->show();
    EXPECT_EQ(words("summary:counts"),
              "No app has an icon in your menu bar right now. When one moves in, it shows up here.");
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(words("done:where"), "Every icon stays in the bar.");
}

TEST_F(SetupTest, CanBeClosedWhereNothingCanBeSorted) {
    layout.hasCompletedSetup = true;
    mac.framework.installed = false;
    startSetup();
    EXPECT_EQ(words("waiting:why"), "Velko can't look at your menu bar: this macOS build isn't supported.");
    EXPECT_TRUE(press(Key::enter));
    EXPECT_FALSE(setup->isShown());
}

TEST_F(SetupTest, GoesWhenTheSetupIsCompletedInAnotherWay) {
    startSetup();
    velko->completeSetup({});
    pass(1s);
    EXPECT_FALSE(setup->isShown());
    EXPECT_EQ(host.visibilityChanges, 2);
}

TEST_F(SetupTest, MovesOnlyWhileTheWelcomeShows) {
    startSetup();
    pass(30s);
    const auto revision = window().revision();
    const auto wakeUps = mac.cost().wakeUps;
    pass(10s);
    EXPECT_EQ(window().revision(), revision) << "the last bubble has gone";
    EXPECT_LE(mac.cost().wakeUps - wakeUps, 10U);
    EXPECT_TRUE(press(Key::enter) && press(Key::leftArrow));
    const auto again = window().revision();
    pass(1s);
    EXPECT_NEAR(static_cast<double>(window().revision() - again), 30, 2);
    EXPECT_TRUE(press(Key::enter));
    const auto gone = window().revision();
    pass(1s);
    EXPECT_EQ(window().revision(), gone);
}

}  // namespace
}  // namespace velko
