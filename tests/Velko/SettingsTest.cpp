#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "tests/Velko/SettingsOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class SettingsTest : public SettingsOnMac {
 protected:
    void SetUp() override {
        launch("com.example.out", "Out", Section::bar);
        in = launch("com.example.in", "In", Section::tucked);
    }

    ProcessID in = 0;
};

TEST_F(SettingsTest, AreSavedAndLoggedAtOnceAndSurviveARestart) {
    startSettings();
    struct Case {
        std::int64_t page;
        const char* id;
        view::Input input;
        const char* standing;
        const char* logged;
    };
    const Case cases[] = {
        {0, "section:com.example.out", std::int64_t{2}, "Buried", "[layout] com.example.out -> buried"},
        {0, "new-icons", std::int64_t{1}, "Tucked", "[settings] new icons go to tucked"},
        {0, "ask", false, "off", "[settings] ask about new icons false"},
        {1, "launch-at-login", true, "on", "[settings] launch at login true"},
        {1, "style-notched", std::int64_t{0}, "In the menu bar",
         "[settings] reveal settings 6, inline, inline, false"},
        {1, "style-other", std::int64_t{1}, "On the shelf",
         "[settings] reveal settings 6, inline, shelf, false"},
        {1, "auto-tuck", std::int64_t{9}, "After 30 seconds",
         "[settings] reveal settings 30, inline, shelf, false"},
        {1, "hover", true, "on", "[settings] reveal settings 30, inline, shelf, true"},
        {1, "pop-out", false, "off", "[settings] pop out on change false"},
        {1, "live-activities", false, "off", "[settings] show Live Activities false"},
        {1, "autopilot", false, "off", "[settings] autopilot false"},
    };
    for (const Case& setting : cases) {
        openPage(setting.page);
        EXPECT_NE(standing(setting.id), setting.standing);
        set(setting.id, setting.input);
        EXPECT_EQ(standing(setting.id), setting.standing);
        EXPECT_EQ(timesLogged(setting.logged), 1) << setting.logged;
        EXPECT_EQ(saved(), values().layout);
    }
    restart();
    for (const Case& setting : cases) {
        openPage(setting.page);
        EXPECT_EQ(standing(setting.id), setting.standing) << setting.id;
    }
}

TEST_F(SettingsTest, ChangeWhatTheMenuBarShows) {
    launch("com.example.unsorted");
    layout.seenApps = BundleIDs{"com.example.unsorted"};
    startSettings();
    set("section:com.example.out", std::int64_t{1});
    EXPECT_FALSE(shows("com.example.out"));
    set("section:com.example.out", std::int64_t{0});
    EXPECT_TRUE(shows("com.example.out"));
    set("new-icons", std::int64_t{2});
    EXPECT_FALSE(shows("com.example.unsorted"));
    openPage(1);
    set("auto-tuck", std::int64_t{0});
    EXPECT_EQ(standing("auto-tuck"), "Never");
    velko->toggle();
    pass(30min);
    EXPECT_TRUE(shows("com.example.in"));
    velko->toggle();
    set("style-other", std::int64_t{1});
    velko->toggle();
    pass(1s);
    EXPECT_TRUE(values().isShelfShown());
    expectSettled();
}

TEST_F(SettingsTest, DecideWhatVelkoDoesByItself) {
    startSettings();
    openPage(1);
    const auto change = [&](const char* title) {
        mac.changeIcon(in, 0, [&](SimulatedIcon& icon) { icon.title = title; });
        pass(3s);
    };
    change("1 new message");
    EXPECT_TRUE(shows("com.example.in"));
    set("pop-out", false);
    EXPECT_FALSE(shows("com.example.in"));
    pass(5min);
    change("2 new messages");
    EXPECT_FALSE(shows("com.example.in"));
    set("show-all");
    EXPECT_TRUE(shows("com.example.in"));
    EXPECT_FALSE(find("show-all")->isEnabled) << "there is nothing left to show";
    velko->handle(RevealEvent::autoTuck());
    pass(1s);
    EXPECT_FALSE(shows("com.example.in"));
    EXPECT_TRUE(find("show-all")->isEnabled);
    openPage(0);
    EXPECT_EQ(words("ask:what"), "New icons wait tucked until you answer.");
    set("ask", false);
    EXPECT_EQ(words("ask:what"), "New icons go where apps go that you haven't sorted.");
    launch("com.example.late");
    pass(16s);
    EXPECT_TRUE(shows("com.example.late") && values().layout.inbox.empty()) << "nobody asks about it";
}

TEST_F(SettingsTest, ShowWhatHolds) {
    layout.reveal.autoTuckSeconds = 17;
    startSettings();
    openPage(1);
    mac.loginItem.refusal = "Operation not permitted";
    set("launch-at-login", true);
    EXPECT_EQ(standing("launch-at-login"), "off");
    EXPECT_EQ(words("launch-at-login:what"), "That didn't work: Operation not permitted");
    mac.loginItem.refusal.reset();
    set("launch-at-login", true);
    EXPECT_EQ(find("launch-at-login:what"), nullptr);
    EXPECT_EQ(standing("auto-tuck"), "After 17 seconds");
    EXPECT_EQ(std::get<view::Picker>(find("auto-tuck")->content).options,
              (std::vector<std::string>{"Never", "After 3 seconds", "After 4 seconds", "After 5 seconds",
                                        "After 6 seconds", "After 8 seconds", "After 10 seconds",
                                        "After 15 seconds", "After 17 seconds", "After 20 seconds",
                                        "After 30 seconds"}));
    EXPECT_EQ(words("pop-out:what"), "It shows in the bar for 10 seconds, then tucks back in.");
}

TEST_F(SettingsTest, TakeTheLayoutToAnotherMac) {
    startSettings();
    EXPECT_EQ(words("transfer"), "Take your layout to another Mac");
    EXPECT_EQ(
        words("transfer:what"),
        "Export where every app lives, then import it on your other Mac. Your click history stays here.");
    const auto exported = folder.path() / "My Velko Layout.velko";
    set("export");
    mac.dialogs.choose(exported);
    pass(1s);
    set("section:com.example.in", std::int64_t{0});
    set("import");
    mac.dialogs.choose(exported);
    pass(1s);
    mac.dialogs.answer(true);
    pass(1s);
    EXPECT_EQ(standing("section:com.example.in"), "Tucked");
}

TEST_F(SettingsTest, TellAboutVelko) {
    startSettings();
    openPage(4);
    EXPECT_EQ(words("version"), "Version 1.2");
    EXPECT_EQ(words("updates:why"), *mac.updater.reason);
    EXPECT_FALSE(window().perform("updates:check"));
    mac.updater.reason.reset();
    openPage(4);
    set("updates:check");
    EXPECT_EQ(mac.updater.checks, 1);
    EXPECT_EQ(mac.application.activations, 1);
    mac.updater.starts = false;
    set("updates:check");
    ASSERT_EQ(mac.dialogs.alerts().size(), 1U);
    EXPECT_EQ(mac.dialogs.alerts().front().title, "Velko couldn't look for updates.");
    set("log:open");
    EXPECT_EQ(mac.application.openedFiles.back().file, log.file());
    set("log:copy");
    EXPECT_TRUE(mac.pasteboard.content.starts_with(log.lines().front()));
}

TEST_F(SettingsTest, RememberTheirPageAndAreCalledAfterIt) {
    startSettings();
    EXPECT_EQ(window().opening()->title, "Menu Bar");
    openPage(1);
    EXPECT_EQ(window().opening()->title, "General");
    restart();
    EXPECT_EQ(window().opening()->title, "General");
    EXPECT_NE(find("page:general"), nullptr);
    mac.defaults.texts["settingsPage"] = "gone";
    restart();
    EXPECT_NE(find("page:menu-bar"), nullptr);
}

TEST_F(SettingsTest, OpenOnceAndCostNothingWhileClosed) {
    startSettings();
    settings->show();
    EXPECT_EQ(window().raised(), 1);
    set("sort-again");
    EXPECT_EQ(host.resorts, 1);
    openPage(1);
    window().dismiss(Surface::Dismissal::closeButton);
    pass(1s);
    EXPECT_FALSE(settings->isShown());
    EXPECT_EQ(host.visibilityChanges, 2);
    const auto revision = window().revision();
    velko->place("com.example.out", Section::tucked);
    pass(1s);
    EXPECT_EQ(window().revision(), revision);
    settings->show();
    EXPECT_NE(find("page:general"), nullptr) << "the page that was open last";
}

TEST_F(SettingsTest, GoWithVelko) {
    startSettings();
    window().dismiss(Surface::Dismissal::closeButton);
    settings.reset();
    pass(1s);
    EXPECT_EQ(host.visibilityChanges, 1) << "nobody is left to be told that the window has closed";
    openSettings();
    settings.reset();
    EXPECT_FALSE(window().isOpen());
}

}  // namespace
}  // namespace velko
