#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>

#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/ShowApp.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class StartTest : public VelkoOnMac {
 protected:
    void SetUp() override { launch("com.example.tucked", Section::tucked); }
};

TEST_F(StartTest, HidesWhatTheLayoutTucksAndLeavesTheRest) {
    launch("com.example.bar", Section::bar);
    launch("com.example.buried", Section::buried);
    launch("com.example.unsorted");
    start();
    EXPECT_TRUE(shows("com.example.bar") && shows("com.example.unsorted"));
    EXPECT_FALSE(shows("com.example.tucked") || shows("com.example.buried"));
    EXPECT_TRUE(logged("[app] Velko 1.2 starting on macOS 27.0"));
    EXPECT_TRUE(logged("[layout] loaded 3 placements from " + file().string()));
    EXPECT_TRUE(
        logged("[inventory] 6 apps with icons: com.apple.MenuBarAgent, com.apple.systemuiserver, "
               "com.example.bar, "));
    EXPECT_TRUE(
        logged("[engine] applied (inventory) in 40 ms: allow app.velko.mac, com.apple.MenuBarAgent, "));
    expectSettled();
}

TEST_F(StartTest, MakesALayoutWhereThereIsNoneAndWarnsWhenItRunsFromElsewhere) {
    bundlePath = "/Users/someone/Downloads/Velko.app";
    startWithFileAsItIs();
    EXPECT_TRUE(
        logged("[app] WARNING: running from /Users/someone/Downloads/Velko.app. Velko's own icon may hide; "
               "install to /Applications."));
    EXPECT_TRUE(logged("[layout] no layout yet: created " + file().string()));
    EXPECT_TRUE(saved().sections.empty());
    EXPECT_TRUE(values().health().isOk());
}

TEST_F(StartTest, ShowsEverythingWhenTheFileCannotBeReadAndPutsItAsideBeforeTheFirstSave) {
    const std::string broken = R"({"sections": {"com.example.tucked": "attic"}})";
    write(broken);
    startWithFileAsItIs();
    EXPECT_TRUE(shows("com.example.tucked"));
    EXPECT_EQ(values().health().kind, Health::Kind::layoutUnreadable);
    EXPECT_NE(values().health().message.find("sections.com.example.tucked"), std::string::npos);
    EXPECT_TRUE(logged("[layout] UNREADABLE, showing everything: " + values().health().message));
    EXPECT_EQ(contentOf(file()), broken);
    velko->saveNow();
    EXPECT_EQ(saved(), values().layout);
    const auto aside = file().parent_path() / "layout.unreadable-2026-03-02T080003Z.json";
    EXPECT_EQ(contentOf(aside), broken);
    EXPECT_TRUE(logged("[layout] unreadable file kept as " + aside.string()));
    velko->loadLayout();
    EXPECT_TRUE(values().health().isOk());
}

TEST_F(StartTest, MakesGoodWhenItQuitsWhatCouldNotBeSaved) {
    bool isFull = true;
    files.rename = [&isFull, rename = files.rename](const char* from, const char* to) {
        errno = ENOSPC;
        return isFull ? -1 : rename(from, to);
    };
    write("broken");
    startWithFileAsItIs();
    velko->place("com.example.tucked", Section::buried);
    pass(2s);
    velko->place("com.example.tucked", Section::bar);
    EXPECT_EQ(timesLogged("[layout] save failed: "), 2);
    EXPECT_EQ(timesLogged("[layout] unreadable file kept as "), 1);
    isFull = false;
    velko->quit();
    EXPECT_EQ(saved(), values().layout);
}

TEST_F(StartTest, EndsRatherThanRunOffTheMainThread) {
    start();
    const auto run = [&] {
        velko->toggle();
        return 0;
    };
    EXPECT_DEATH(mac.mainThread.background(run, [](int) {}).detach(), "off the main thread");
}

TEST_F(StartTest, SaysSoWhenTheSystemCannotHide) {
    mac.framework.installed = false;
    start();
    EXPECT_EQ(values().health().kind, Health::Kind::engineUnavailable);
    EXPECT_TRUE(shows("com.example.tucked"));
    EXPECT_TRUE(
        logged("[engine] UNAVAILABLE: not supported on this macOS build. Hiding nothing.\nloaded: false\n"));
    const auto wakeUps = mac.cost().wakeUps;
    pass(1h);
    EXPECT_FALSE(values().inventoryLoaded);
    EXPECT_EQ(mac.cost().wakeUps, wakeUps) << "nothing else starts";
}

TEST_F(StartTest, FallsBackToCollapsedWhenTheSystemRefusesAndRecoversLater) {
    start();
    mac.framework.refusal = FrameworkError{"Test", 7, "Not today"};
    velko->toggle();
    velko->toggle(true);
    velko->toggle();
    pass(1s);
    EXPECT_TRUE(logged("[engine] FAILED (toggle): Not today. Everything shown."));
    EXPECT_EQ(values().state, RevealState::collapsed());
    EXPECT_TRUE(shows("com.example.tucked"));
    mac.framework.refusal.reset();
    mac.session.changeSpace();
    pass(2s);
    EXPECT_FALSE(shows("com.example.tucked"));
    expectSettled();
}

TEST_F(StartTest, ShowsEverythingWhenItQuitsAndWritesWhatWasPending) {
    start();
    std::filesystem::remove(file());
    velko->scheduleSave();
    velko->open("com.example.tucked");
    velko->toggle();
    velko->toggle();
    velko->toggleIconWatch();
    velko->showMe().start("com.example.tucked");
    velko->transfer().exportLayout();
    launch("com.example.late");
    mac.advance(700ms);
    velko->quit();
    mac.advance(2min);
    EXPECT_EQ(mac.registered().work, 0U) << "nothing is left to do";
    EXPECT_EQ(saved(), values().layout);
    EXPECT_TRUE(shows("com.example.tucked"));
    EXPECT_TRUE(log.lines().back().ends_with("[app] quitting: everything shown"));
    std::filesystem::remove_all(file().parent_path());
    std::ofstream(file().parent_path()) << "a file in the folder's place";
    velko->saveNow();
    EXPECT_TRUE(logged("[layout] save failed: "));
}

}  // namespace
}  // namespace velko
