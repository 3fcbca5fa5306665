#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using ScanTest = VelkoOnMac;

TEST_F(ScanTest, TakesTheAnswerOfTheNewestRequestOnly) {
    start();
    const ProcessID hung = launch("com.example.hung");
    mac.hang(hung, true);
    pass(10ms);
    velko->requestScan(ScanDepth::full);
    mac.hang(hung, false);
    velko->requestScan(ScanDepth::full);
    const auto lines = timesLogged("[inventory]");
    pass(400ms);
    EXPECT_EQ(timesLogged("[inventory]"), lines + 1);
    EXPECT_EQ(values().items.size(), 5U) << "the first answer came without the hung app's icon";
}

TEST_F(ScanTest, ConcludesNothingFromAFullScanThatNobodyAnswers) {
    launch("com.example.app");
    const auto hangAll = [this](bool hung) {
        for (const auto& process : mac.processes.running()) {
            mac.hang(process.pid, hung && process.pid != mac.processes.ownPID());
        }
    };
    hangAll(true);
    start();
    EXPECT_FALSE(values().inventoryLoaded);
    hangAll(false);
    velko->requestScan(ScanDepth::light);
    pass(1s);
    EXPECT_TRUE(values().inventoryLoaded);
    EXPECT_TRUE(logged("[inventory] 3 apps with icons: ")) << "the light scan has made good for the full one";
}

TEST_F(ScanTest, NeverHoldsUpAClickOnTheBroom) {
    mac.setDisplays({SimulatedDisplays::plain({}, {3840, 2160})});  // with room for all
    for (int number = 0; number < 40; ++number) {
        const auto app = launch("com.example.app" + std::to_string(number), Section::tucked);
        mac.hang(app, number % 8 == 0);
    }
    start();
    velko->requestScan(ScanDepth::full);
    pass(10ms);
    const auto lines = timesLogged("[inventory]");
    const auto calls = mac.cost().engineCalls;
    const auto clickedAt = mac.mainThread.now();
    velko->toggle();
    EXPECT_EQ(mac.cost().engineCalls, calls + 1);
    EXPECT_LT(mac.mainThread.now() - clickedAt, 5ms) << "only Velko's own process may have been asked";
    pass(50ms);
    EXPECT_TRUE(shows("com.example.app1"));
    EXPECT_EQ(timesLogged("[inventory]"), lines) << "the scan is still under way";
}

TEST_F(ScanTest, SaysAndDoesNothingWhenALightScanFindsTheSameApps) {
    launch("com.example.tucked", Section::tucked);
    start();
    pass(60s);
    const auto lines = log.lines().size();
    const auto calls = mac.cost().engineCalls;
    int changes = 0;
    velko->onChange = [&] { ++changes; };
    velko->requestScan(ScanDepth::light);
    pass(1s);
    EXPECT_EQ(changes, 1) << "icons may have moved, the broom among them";
    velko->requestScan(ScanDepth::full);
    pass(1s);
    EXPECT_EQ(changes, 2) << "the engine was asked and had nothing to do";
    EXPECT_EQ(log.lines().size(), lines);
    EXPECT_EQ(mac.cost().engineCalls, calls);
}

TEST_F(ScanTest, LooksThreeTimesMoreAfterALaunchAndOnceAfterAQuit) {
    // A light scan asks apps without an icon again; it knows the others.
    for (const auto* const quiet : {"com.example.1", "com.example.2", "com.example.3", "com.example.4"}) {
        mac.launch({.bundleID = quiet, .name = quiet, .icons = {}});
    }
    start();
    pass(1s);
    const auto scansIn = [&](auto duration) {
        const auto before = mac.cost().accessibilityMessages;
        pass(duration);
        return mac.cost().accessibilityMessages >=
               before + 4;  // fewer messages would be about the permission
    };
    const ProcessID app = mac.launch({.bundleID = "com.example.app", .name = "App", .icons = {}});
    EXPECT_TRUE(scansIn(600ms) && scansIn(2s) && scansIn(3s));
    EXPECT_FALSE(scansIn(9s));
    EXPECT_TRUE(scansIn(1s));
    mac.launch({.bundleID = "com.example.other", .name = "Other", .icons = {}});
    pass(16s);
    mac.quit(app);
    EXPECT_TRUE(scansIn(600ms));
    EXPECT_FALSE(scansIn(16s));
}

TEST_F(ScanTest, FindsWithinAMinuteWhatNobodyAnnounced) {
    start();
    const ProcessID app = mac.launch({.bundleID = "com.example.app", .name = "App", .icons = {}});
    pass(20s);
    mac.addIcon(app, {.title = "Icon"});
    pass(41s);
    EXPECT_TRUE(logged("[system] launched com.example.app"));
    EXPECT_TRUE(logged("[inventory] 3 apps with icons (light rescan): "));
    mac.quit(app);
    pass(1s);
    EXPECT_EQ(values().items.size(), 4U);
}

TEST_F(ScanTest, MeasuresTheAppsWithTheFirstScanAndThenEveryHalfMinute) {
    launch("com.example.app");
    startWithFileAsItIs();
    EXPECT_FALSE(values().usage.at("com.example.app").cpuPercent);
    pass(31s);
    EXPECT_TRUE(values().usage.at("com.example.app").cpuPercent);
}

}  // namespace
}  // namespace velko
