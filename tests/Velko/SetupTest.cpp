#include "tests/Velko/SetupOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class SetupTest : public SetupOnMac {
 protected:
    SetupTest() : SetupOnMac(false) {}

    void SetUp() override {
        for (const char* name : {"chat", "clock", "vpn"}) {
            mac.launch(
                {.bundleID = std::string("com.example.") + name, .name = name, .icons = {{.title = name}}});
        }
        layout.lastClicked["com.example.chat"] =
            floorToSeconds(mac.mainThread.date()) - std::chrono::days(40);
        layout.lastClicked["com.example.clock"] =
            floorToSeconds(mac.mainThread.date()) - std::chrono::days(1);
    }

    /// The cards, in a Velko that has the permission already.
    void startSorting() {
        mac.grantTrust();
        startSetup();
        ASSERT_TRUE(press(Key::enter));
    }

    [[nodiscard]] std::string card() {
        return step() != "setup:sort"
                   ? step()
                   : words("sort:place") + " " + words("sort:name") + ": " + words("sort:reason");
    }

    void close() {
        window().dismiss(Surface::Dismissal::closeButton);
        pass(1s);
    }
};

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
    pass(1s);
    EXPECT_FALSE(setup->isShown());
    EXPECT_EQ(visibilityChanges, 2);
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
    EXPECT_TRUE(window().perform("sort:bar") && window().perform("sort:rest"));
    EXPECT_EQ(words("summary:counts"), "1 in the bar, 1 tucked, 1 buried.");
    EXPECT_TRUE(window().perform("summary:over") && window().perform("sort:tucked"));
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
    EXPECT_EQ(visibilityChanges, 2);
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
    EXPECT_TRUE(press(Key::enter) && press(Key::enter) && press(Key::enter) && press(Key::enter));
    pass(1s);
    EXPECT_EQ(saved().section("com.example.vpn"), Section::buried);
    EXPECT_EQ(saved().section("com.example.clock"), Section::bar);
}

TEST_F(SetupTest, TakesOverWhatAnotherOrganiserLeftOnlyWhenTheUserWantsIt) {
    for (const bool takes : {false, true}) {
        mac.surfaces.forget();
        found = ImportedLayout{.source = "Ice", .sections = {}, .autoTuckSeconds = 15, .hover = true};
        startSorting();
        EXPECT_EQ(step(), "setup:found");
        EXPECT_EQ(words("found:title"), "You come from Ice");
        EXPECT_EQ(
            words("found:places"),
            "The places of your icons can't be taken over: Ice keeps none that Velko can read. You sort "
            "them yourself, card by card.");
        EXPECT_EQ(words("found:time"), "How long icons stay out can be taken over: 15 seconds.");
        EXPECT_TRUE(takes ? press(Key::enter) : press('k'));
        EXPECT_TRUE(press('r'));
        EXPECT_EQ(words("summary:timing"), takes ? "With Ice's timing." : "");
        EXPECT_EQ(values().layout.reveal, RevealSettings());
        EXPECT_TRUE(press(Key::enter));
        pass(1s);
        EXPECT_EQ(saved().reveal.autoTuckSeconds, takes ? 15 : 6);
        EXPECT_EQ(saved().reveal.hover, takes);
    }
}

TEST_F(SetupTest, ProposesThePlacesThatAnotherOrganiserLeft) {
    found = ImportedLayout{.source = "Bartender",
                           .sections = {{"com.example.vpn", Section::buried}},
                           .autoTuckSeconds = {},
                           .hover = {}};
    startSorting();
    EXPECT_EQ(words("found:places"),
              "The places of 1 app can be taken over: 0 in the bar, 0 tucked, 1 buried. They stand as "
              "suggestions on your cards.");
    EXPECT_EQ(
        words("found:time"),
        "How long icons stay out can't be taken over: Bartender doesn't say. With Velko it is 6 seconds.");
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(card(), "1 of 3 vpn: From Bartender");
    EXPECT_EQ(words("sort:buried"), "vpn: Bury, proposed");
    EXPECT_TRUE(press(Key::leftArrow));
    EXPECT_EQ(step(), "setup:found");
}

TEST_F(SetupTest, BeginsWithTheCardsWhenTheUserSortsAgain) {
    layout.hasCompletedSetup = true;
    layout.place("com.example.vpn", Section::tucked);
    mac.grantTrust();
    startSetup();
    EXPECT_EQ(window().opening()->title, "Sort Your Menu Bar");
    EXPECT_EQ(card(), "1 of 3 vpn: From your current layout");
    EXPECT_FALSE(press(Key::leftArrow)) << "there is nothing before the first card";
    setup->show();
    EXPECT_EQ(window().raised(), 1);
    EXPECT_TRUE(press('1') && press('r') && press(Key::enter));
    pass(1s);
    EXPECT_TRUE(shows("com.example.vpn"));
    EXPECT_FALSE(shows("com.example.chat"));
    setup->show();
    EXPECT_EQ(card(), "1 of 3 vpn: From your current layout") << "a new sort begins anew";
}

TEST_F(SetupTest, SaysWhyThereIsNothingToSort) {
    layout.hasCompletedSetup = true;
    startSetup();
    EXPECT_EQ(words("waiting:why"), "Velko can't look at your menu bar until you give it permission.");
    mac.grantTrust();
    mac.hang(mac.workspace.pids("com.example.vpn").front(), true);
    pass(1s);
    EXPECT_EQ(words("waiting:why"), "Looking at your menu bar…");
    pass(1s);
    EXPECT_EQ(card(), "1 of 2 clock: From your current layout") << "the cards come by themselves";
    for (const char* app : {"com.example.vpn", "com.example.clock", "com.example.chat"}) {
        mac.quit(mac.workspace.pids(app).front());
    }
    close();
    setup->show();
    EXPECT_EQ(words("summary:counts"),
              "No app has an icon in your menu bar right now. When one moves in, it shows up here.");
    EXPECT_TRUE(press(Key::enter));
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
