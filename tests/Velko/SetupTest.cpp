#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedScreen.h"
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
    mac.dialogs.answer(false);
    pass(1s);
    EXPECT_EQ(words("summary:counts"), "0 in the bar, 1 tucked, 2 buried.") << "it asks first";
    EXPECT_TRUE(window().perform("summary:over"));
    mac.dialogs.answer(true);
    pass(1s);
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
    EXPECT_FALSE(values().layout.hasCompletedSetup || logged("[setup] sorted"));
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

TEST_F(SetupTest, StaysAwayOnceItWasPutOffAndLosesNothing) {
    startSorting();
    EXPECT_TRUE(press('3') && press(Key::leftArrow) && press(Key::leftArrow));
    EXPECT_TRUE(window().perform("welcome:later"));
    pass(1s);
    EXPECT_FALSE(setup->isShown());
    EXPECT_TRUE(saved().setupPutOff.has_value());
    EXPECT_FALSE(saved().hasCompletedSetup);
    setup->show();
    close();
    EXPECT_EQ(timesLogged("[setup] put off"), 1);
    setup->show();
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(card(), "2 of 3 clock: Last clicked yesterday") << "the answer before is kept";
    EXPECT_TRUE(press('r') && press(Key::enter));
    pass(1s);
    EXPECT_EQ(saved().section("com.example.vpn"), Section::buried);
}

TEST_F(SetupTest, LetsAppsBePutElsewhereAtTheEnd) {
    startSorting();
    EXPECT_TRUE(press('r'));
    EXPECT_EQ(reading(*view::find(*window().content(), "summary:bar")),
              (std::vector<std::string>{"In the Bar", "vpn"}));
    EXPECT_EQ(mac.surfaces.announcements().back(), "All sorted. 1 in the bar, 1 tucked, 1 buried.");
    EXPECT_TRUE(window().perform("summary:app:com.example.clock"));
    EXPECT_EQ(card(), "Another place clock: Last clicked yesterday");
    EXPECT_EQ(view::find(*window().content(), "sort:rest"), nullptr);
    EXPECT_TRUE(press(Key::leftArrow));
    EXPECT_EQ(words("summary:counts"), "1 in the bar, 1 tucked, 1 buried.") << "nothing was chosen";
    EXPECT_TRUE(window().perform("summary:app:com.example.clock") && press('1'));
    EXPECT_EQ(words("summary:counts"), "2 in the bar, 0 tucked, 1 buried.");
    EXPECT_TRUE(window().perform("summary:tucked", BundleID("com.example.vpn"))) << "dragged";
    EXPECT_TRUE(view::choose(view::menuOf(*window().content(), "summary:app:com.example.chat"), {0}));
    EXPECT_EQ(words("summary:counts"), "2 in the bar, 1 tucked, 0 buried.");
    EXPECT_TRUE(press(Key::enter));
    pass(1s);
    EXPECT_EQ(saved().sections, (std::map<BundleID, Section>{{"com.example.chat", Section::bar},
                                                             {"com.example.clock", Section::bar},
                                                             {"com.example.vpn", Section::tucked}}));
}

TEST_F(SetupTest, SaysOnItsLastPageThatNothingCouldBeSaved) {
    startSorting();
    EXPECT_TRUE(press('r'));
    const auto away = folder.path() / "away";
    std::filesystem::rename(file().parent_path(), away);
    writeFile(file().parent_path(), "a file in the folder's place");
    EXPECT_TRUE(press(Key::enter));
    pass(1s);
    EXPECT_TRUE(words("done:save:what").starts_with("That couldn't be saved: "));
    std::filesystem::remove(file().parent_path());
    std::filesystem::rename(away, file().parent_path());
    EXPECT_TRUE(window().perform("done:save:again"));
    pass(1s);
    EXPECT_EQ(view::find(*window().content(), "done:save"), nullptr);
    EXPECT_TRUE(saved().hasCompletedSetup);
}

TEST_F(SetupTest, TellsAboutLoginAndAsksAboutTheNotchWhereThereIsOne) {
    mac.setDisplays({SimulatedDisplays::notched()});
    startSorting();
    EXPECT_TRUE(press('r') && window().perform("summary:style", std::int64_t{0}));
    EXPECT_EQ(values().layout.reveal, RevealSettings()) << "nothing happens before it is applied";
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(saved().reveal.notchedStyle, RevealStyle::inline_);
    EXPECT_EQ(words("launch-at-login"), "Open Velko when you log in");
    EXPECT_TRUE(window().perform("launch-at-login", true));
    EXPECT_EQ(mac.loginItem.now, LoginItem::Status::enabled);
}

}  // namespace
}  // namespace velko
