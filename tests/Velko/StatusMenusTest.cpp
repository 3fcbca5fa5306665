#include <gmock/gmock.h>

#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Broom/StatusMenus.h"
#include "Velko/Ports/Desktop.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/Velko/BroomOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using Lines = std::vector<std::string>;

constexpr SimulatedClick debugging{.isRight = true, .option = true};

class StatusMenusTest : public BroomOnMac {};

TEST_F(StatusMenusTest, ListEachHiddenAppOnceWithoutHeaderForASingleGroup) {
    mac.launch({.bundleID = "com.example.a", .name = "A", .icons = {{.title = "1"}, {.title = "2"}}});
    layout.newIconDefault = Section::tucked;  // this does not concern the system's own items
    layout.askAboutNewIcons = false;
    startBroom();
    EXPECT_EQ(openMenu(), (Lines{"arrow.up.forward.app Open", "  A", "--", "gearshape Settings…",
                                 "(arrow.down.circle Check for Updates…)", "power Quit Velko"}));
    ASSERT_TRUE(mac.statusItem.chooseFromMenu("A"));
    pass(1s);
    EXPECT_EQ(mac.windows.menuOwner(), mac.workspace.pids("com.example.a").front());
    mac.closeMenu();
    pass(1s);
    EXPECT_EQ(values().state, RevealState::collapsed());
    ASSERT_TRUE(choose("Settings…"));
    EXPECT_EQ(host.settings, 1);
    ASSERT_TRUE(choose("Quit Velko"));
    EXPECT_TRUE(mac.application.isTerminating);
}

TEST_F(StatusMenusTest, OfferTheSearchLastOnceTheUserWantsIt) {
    layout.searchInMenu = true;
    startBroom();
    EXPECT_EQ(openMenu().at(1), "  magnifyingglass Search…") << "also while nothing is hidden";
    mac.statusItem.closeMenu();
    launch("com.example.a");
    velko->place("com.example.a", Section::tucked);
    pass(20s);
    const Lines menu = openMenu();
    EXPECT_EQ(Lines(menu.begin(), menu.begin() + 4),
              (Lines{"arrow.up.forward.app Open", "  com.example.a", "  --", "  magnifyingglass Search…"}));
    ASSERT_TRUE(mac.statusItem.chooseFromMenu("Search…"));
    EXPECT_EQ(host.searches, Lines{""});
}

TEST_F(StatusMenusTest, NameBothGroupsAndCountQuestions) {
    const Date longAgo = floorToSeconds(mac.mainThread.date()) - std::chrono::days(60);
    layout.autopilot.watchingSince = longAgo;
    for (const char* const idle : {"com.example.dusty", "com.example.idle"}) {
        launch(idle, Section::bar);
        layout.firstSeen[idle] = longAgo;
    }
    launch("com.example.new", Section::tucked);
    launch("com.example.buried", Section::buried);
    layout.inbox = {"com.example.new"};
    mac.updater.reason.reset();
    startBroom();
    EXPECT_EQ(openMenu(), (Lines{"arrow.up.forward.app Open", "  Tucked:", "  com.example.new",
                                 "  Buried:", "  com.example.buried", "sparkles 1 New Icon",
                                 "wand.and.sparkles Tidy Suggestions (2)", "--", "gearshape Settings…",
                                 "arrow.down.circle Check for Updates…", "power Quit Velko"}));
    ASSERT_TRUE(mac.statusItem.chooseFromMenu("Check for Updates…"));
    EXPECT_EQ(mac.updater.checks, 1);
    EXPECT_EQ(mac.application.activations, 1);
    layout.inbox.emplace_back("com.example.dusty");
    startBroom();
    ASSERT_TRUE(choose("2 New Icons"));
    EXPECT_TRUE(note().isOpen());
}

TEST_F(StatusMenusTest, PutWhatIsWrongFirst) {
    const Lines rest{"(arrow.up.forward.app Open)", "--", "gearshape Settings…",
                     "(arrow.down.circle Check for Updates…)", "power Quit Velko"};
    const auto expectMenu = [&](Lines lines) {
        lines.insert(lines.end(), rest.begin(), rest.end());
        EXPECT_EQ(openMenu(), lines);
    };
    mac.revokeTrust();
    bundlePath = "/Users/someone/Downloads/Velko.app";
    startBroom();
    expectMenu({"(Velko needs permission to tidy your menu bar.)", "Open Device Control and Data Access…",
                "--", "(Move Velko to Applications so its icon stays visible.)", "--"});
    ASSERT_TRUE(mac.statusItem.chooseFromMenu("Open Device Control and Data Access…"));
    EXPECT_THAT(mac.workspace.openedURLs(), ElementsAre(EndsWith("Privacy_Accessibility")));
    const view::Menu menu = StatusMenus::mainMenu(faceParts(), {});
    EXPECT_EQ(menu.at(5).help, "No app in the menu bar is tucked or buried.");
    EXPECT_EQ(menu.at(8).help, *mac.updater.reason);

    bundlePath = "/Applications/Velko.app";
    write("not a layout");
    startBroom(true);
    expectMenu({"(Your layout file can't be read. Nothing is hidden.)", "Edit Layout File…", "--"});
    ASSERT_TRUE(mac.statusItem.chooseFromMenu("Edit Layout File…"));
    EXPECT_THAT(mac.application.openedFiles,
                ElementsAre(SimulatedApplication::OpenedFile{file(), "/System/Applications/TextEdit.app"}));

    mac.framework.installed = false;
    startBroom(true);
    expectMenu({"(Not supported on this macOS build. Nothing is hidden.)", "--"});
}

class DebugMenuTest : public BroomOnMac {
 protected:
    void SetUp() override {
        app = launch("com.example.tucked", Section::tucked);
        mac.processes.setMemory(app, 500ULL << 20U);
        startBroom();
    }
    ProcessID app = 0;
};

TEST_F(DebugMenuTest, TellsHowThingsStandAndOffersTools) {
    EXPECT_EQ(openMenu(debugging),
              (Lines{"(Debug)", "(State: collapsed)",
                     "(Plan: allow app.velko.mac, com.apple.MenuBarAgent, com.apple.systemuiserver)", "--",
                     "Dump Inventory to Log", "Show All", "Log Current Allowlist", "Log Engine Probe",
                     "Log App Health and Autopilot", "Start Icon Watch (Pop-up Test)", "--",
                     "Edit Layout File…", "Reload Layout", "--", "Copy Log", "Open Log File"}));
    ASSERT_TRUE(mac.statusItem.chooseFromMenu("Show All"));
    EXPECT_TRUE(shows("com.example.tucked"));
    ASSERT_TRUE(chooseDebug("Start Icon Watch (Pop-up Test)"));
    EXPECT_TRUE(velko->isIconWatchRunning());
    EXPECT_EQ(openMenu(debugging).at(2), "(Plan: show all)");
    ASSERT_TRUE(mac.statusItem.chooseFromMenu("Stop Icon Watch (Pop-up Test)"));
    EXPECT_FALSE(velko->isIconWatchRunning());
    layout.place("com.example.tucked", Section::bar);
    ASSERT_TRUE(LayoutStore(file()).save(layout));
    ASSERT_TRUE(chooseDebug("Reload Layout"));
    EXPECT_EQ(values().layout.section("com.example.tucked"), Section::bar);
}

TEST_F(DebugMenuTest, WritesWhatItFindsIntoTheLog) {
    const std::string x = std::to_string(static_cast<int>(values().items.front().frame.x));
    launch("com.example.young");
    pass(3s);
    for (const char* const entry : {"Dump Inventory to Log", "Log Current Allowlist", "Log Engine Probe",
                                    "Log App Health and Autopilot"}) {
        ASSERT_TRUE(chooseDebug(entry)) << entry;
        pass(1s);
    }
    for (const std::string& text :
         Lines{"[debug] inventory: 6 items\n",
               "[debug]   com.example.tucked | com.example.tucked | pid " + std::to_string(app) +
                   " | \"com.example.tucked\" | x=" + x + " | tucked\n",
               "[debug] MenuBarAgent tree:\nMenuBarAgent pid ", "[debug] plan: allow app.velko.mac, ",
               "[debug] engine probe:\nloaded: true\n",
               "[debug] app health:\n  com.example.tucked | 500 MB | HEAVY\n",
               "HEAVY\n  com.example.young | no samples yet\n  SystemUIServer | 40 MB\n",
               "[debug] autopilot: watching since 2026-03-02T08:00:00Z, suggestions: 0"}) {
        EXPECT_THAT(log.text(), HasSubstr(text));
    }
    ASSERT_TRUE(chooseDebug("Copy Log"));
    EXPECT_EQ(mac.pasteboard.content, log.text());
    ASSERT_TRUE(chooseDebug("Open Log File"));
    EXPECT_EQ(mac.application.openedFiles.back(), (SimulatedApplication::OpenedFile{log.file(), {}}));
}

}  // namespace
}  // namespace velko
