#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Velko/Flows/Preferences.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class PreferencesTest : public VelkoOnMac {
 protected:
    void SetUp() override { launch("com.example.tucked", Section::tucked); }
};

TEST_F(PreferencesTest, AreSavedAtOnceAndLogged) {
    start();
    Preferences& preferences = velko->preferences();
    preferences.setSwitch(Switch::askAboutNewIcons, false);
    EXPECT_TRUE(log.lines().back().ends_with("[settings] ask about new icons false"));
    preferences.setSwitch(Switch::showLiveActivities, false);
    EXPECT_TRUE(log.lines().back().ends_with("[settings] show Live Activities false"));
    preferences.setSwitch(Switch::popOutOnChange, false);
    EXPECT_TRUE(log.lines().back().ends_with("[settings] pop out on change false"));
    preferences.setSwitch(Switch::autopilot, false);
    EXPECT_TRUE(log.lines().back().ends_with("[settings] autopilot false"));
    preferences.setReveal({.autoTuckSeconds = 90, .otherStyle = RevealStyle::shelf, .hover = true});
    EXPECT_TRUE(log.lines().back().ends_with("[settings] reveal settings 30, shelf, shelf, true"));
    const Layout file = saved();
    EXPECT_FALSE(file.askAboutNewIcons || file.showLiveActivities || file.popOutOnChange ||
                 file.autopilot.enabled);
    EXPECT_EQ(file.reveal, values().layout.reveal);
    EXPECT_EQ(file.reveal.autoTuckSeconds, 30);
}

TEST_F(PreferencesTest, DecideWhereAppsWithoutAPlaceGo) {
    launch("com.example.unsorted");
    start();
    velko->preferences().setNewIconDefault(Section::tucked);
    pass(1s);
    EXPECT_FALSE(shows("com.example.unsorted"));
    EXPECT_TRUE(logged("[settings] new icons go to tucked"));
    EXPECT_TRUE(logged("applied (new icon default)"));
    EXPECT_EQ(saved().newIconDefault, Section::tucked);
}

TEST_F(PreferencesTest, ChangeTheTimeOfIconsThatAreOutAlready) {
    launch("com.example.buried", Section::buried);
    start();
    velko->toggle(true);
    EXPECT_TRUE(logged("toggleWithBuried: collapsed -> revealed with buried"));
    velko->preferences().setReveal({.autoTuckSeconds = 0});
    pass(24h);
    EXPECT_TRUE(shows("com.example.buried"));
    EXPECT_TRUE(shows("com.example.tucked"));
    velko->preferences().setReveal({.autoTuckSeconds = 10});
    pass(11s);
    EXPECT_FALSE(shows("com.example.tucked"));
}

TEST_F(PreferencesTest, LeaveLaunchAtLoginToTheSystem) {
    start();
    EXPECT_TRUE(logged("[app] launch at login not registered"));
    velko->preferences().setLaunchAtLogin(true);
    EXPECT_EQ(mac.loginItem.status(), LoginItem::Status::enabled);
    EXPECT_TRUE(logged("[settings] launch at login true"));
    mac.loginItem.refusal = "Operation not permitted";
    velko->preferences().setLaunchAtLogin(false);
    EXPECT_TRUE(logged("[settings] launch at login failed: Operation not permitted"));
    EXPECT_EQ(values().loginRevision, 2);
}

}  // namespace
}  // namespace velko
