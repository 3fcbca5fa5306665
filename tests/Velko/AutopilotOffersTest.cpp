#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

/// Twenty days after Velko began to watch clicks, on the Mac of a person who clicks little.
class AutopilotOffersTest : public VelkoOnMac {
 protected:
    AutopilotOffersTest() {
        layout.hasCompletedSetup = true;
        layout.seenApps = BundleIDs{"com.example.dusty", "com.example.idle", "com.example.tucked"};
        layout.autopilot.watchingSince = today() - days(20);
        launch("com.example.dusty", Section::bar);
        launch("com.example.idle", Section::bar);
        launch("com.example.tucked", Section::tucked);
        layout.lastClicked["com.example.idle"] = today() - days(13);
    }

    [[nodiscard]] Date today() const { return floorToSeconds(mac.mainThread.date()); }
    [[nodiscard]] static std::chrono::seconds days(int count) { return std::chrono::days(count); }
    void skipDays(int count) { mac.mainThread.setDate(mac.mainThread.date() + days(count)); }
    void startAndWait() {
        start();
        pass(1h);
    }
    [[nodiscard]] bool isOffering() const { return saved().autopilot.offerPending; }
    [[nodiscard]] std::vector<TidySuggestion> suggestions() { return velko->autopilot().suggestions(); }
};

TEST_F(AutopilotOffersTest, OfferOnceAWeekAndMoveWhatTheUserAccepts) {
    start();
    EXPECT_FALSE(velko->note().isAnythingToAsk());
    pass(1h);
    EXPECT_TRUE(logged("[autopilot] offering 1 suggestion"));
    EXPECT_TRUE(velko->note().isAnythingToAsk());
    velko->autopilot().accept(suggestions().front());
    pass(1s);
    EXPECT_FALSE(shows("com.example.dusty"));
    EXPECT_TRUE(logged("[autopilot] accepted: com.example.dusty -> tucked"));
    EXPECT_TRUE(logged("applied (autopilot) in "));
    EXPECT_FALSE(isOffering());
    skipDays(6);
    pass(1h);
    EXPECT_EQ(timesLogged("offering"), 1) << "the other app has become idle, but no week has passed";
    skipDays(1);
    pass(1h);
    EXPECT_EQ(timesLogged("offering"), 2);
}

TEST_F(AutopilotOffersTest, StayOpenUntilEverySuggestionIsDealtWith) {
    layout.lastClicked.clear();
    startAndWait();
    EXPECT_TRUE(logged("[autopilot] offering 2 suggestions"));
    velko->autopilot().dismiss("com.example.dusty");
    EXPECT_TRUE(logged("[autopilot] not now: com.example.dusty"));
    EXPECT_TRUE(isOffering());
    velko->autopilot().alwaysKeep("com.example.idle");
    EXPECT_TRUE(saved().alwaysKeep.contains("com.example.idle"));
    EXPECT_FALSE(isOffering());
    skipDays(30);
    EXPECT_EQ(suggestions().size(), 2U) << "the dismissed app is back, beside one that is tucked for long";
}

TEST_F(AutopilotOffersTest, AskAHeavyAppToQuitAndLeaveItAlone) {
    mac.processes.setMemory(mac.workspace.pids("com.example.tucked").front(), 500ULL << 20U);
    layout.lastClicked["com.example.dusty"] = today();
    startAndWait();
    ASSERT_EQ(suggestions().size(), 1U);
    velko->autopilot().accept(suggestions().front());
    EXPECT_TRUE(logged("[health] asked com.example.tucked to quit"));
    EXPECT_TRUE(suggestions().empty()) << "also if it declines";
    EXPECT_EQ(saved().section("com.example.tucked"), Section::tucked);
    pass(2s);
    EXPECT_TRUE(logged("[system] quit com.example.tucked"));
}

TEST_F(AutopilotOffersTest, EndWhenTheUserPlacesTheAppOrSwitchesThemOff) {
    startAndWait();
    velko->place("com.example.dusty", Section::tucked);
    EXPECT_FALSE(isOffering());
    velko->place("com.example.dusty", Section::bar);
    skipDays(7);
    pass(1h);
    EXPECT_TRUE(velko->note().isAnythingToAsk());
    velko->preferences().setSwitch(Switch::autopilot, false);
    EXPECT_TRUE(suggestions().empty());
    EXPECT_FALSE(isOffering());
}

TEST_F(AutopilotOffersTest, WaitForTheFirstScanBeforeTheyCountAsSettled) {
    layout.autopilot.offerPending = true;
    mac.revokeTrust();
    start();
    velko->place("com.example.other", Section::bar);
    pass(2h);
    EXPECT_TRUE(isOffering());
    mac.grantTrust();
    pass(3s);
    EXPECT_TRUE(velko->note().isAnythingToAsk());
}

}  // namespace
}  // namespace velko
