#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "Playground/Web/Actions.h"
#include "Playground/Web/Desktop.h"
#include "Playground/Web/Live.h"
#include "Playground/Web/Picture.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "Velko/App/AppMenu.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/View/Node.h"
#include "tests/TemporaryFolder.h"

namespace velko::web {
namespace {

class SessionTest : public testing::Test {
 protected:
    Done ask(std::string_view action, std::string_view body = "{}") {
        return act(session, action, Json::parse(body).value());
    }
    void wait(std::chrono::seconds duration) {
        session.mac().advance(duration);
        session.settle();
    }
    Done play(const std::string& line) {
        return act(session, "desk", {.value = Json::Object{{"line", {.value = line}}}});
    }
    /// Starts Velko and opens the menu of a tile on its shelf.
    void openTileMenu() {
        for (const auto* line : {"displays laptop", "trust grant", "velko start"}) {
            ASSERT_TRUE(play(line)) << line;
        }
        wait(std::chrono::seconds(20));
        session.mac().surfaces.surface(Surfaces::Kind::setup).dismiss(Surface::Dismissal::closeButton);
        ASSERT_TRUE(play("finish setup"));
        ASSERT_TRUE(play("place Spotify tucked"));
        wait(std::chrono::seconds(2));
        ASSERT_TRUE(ask("broom"));
        wait(std::chrono::seconds(1));
        ASSERT_TRUE(ask("menu", R"({"surface":"shelf","id":"tile:com.spotify.client"})"));
        ASSERT_EQ(session.menus().size(), 1U);
    }
    [[nodiscard]] std::size_t countOf(std::string_view app) {
        return session.mac().workspace.pids(BundleID(app)).size();
    }

    TemporaryFolder home;
    Session session{home.path()};
};

TEST_F(SessionTest, PlaysLinesAndSaysWhyOneCannotBe) {
    EXPECT_TRUE(ask("desk", R"({"line":"icon title Slack \"<b>3</b>\""})"));
    const std::string bar = draw(session).regions.at("bar");
    EXPECT_NE(bar.find("&lt;b&gt;3&lt;/b&gt;"), std::string::npos);
    EXPECT_EQ(bar.find("<b>3"), std::string::npos);
    EXPECT_FALSE(ask("desk", R"({"line":"dance"})"));
    EXPECT_FALSE(ask("desk", R"({"line":"quit com.example.none"})"));
}

TEST_F(SessionTest, SurvivesWhateverItIsAsked) {
    for (const auto* action : {"act", "menu", "app-menu", "app-key", "choose", "icon", "dismiss", "pace",
                               "panel", "pointer", "desk"}) {
        for (const auto* body :
             {"{}", "[]", "null", R"({"surface":7,"id":[],"value":{},"place":[-1],"pid":-1})",
              R"({"surface":"note","id":"none","value":1e99,"place":[99,99],"pid":99999999999})",
              R"({"speed":-1,"file":"../../etc/passwd","line":"\u0000"})"}) {
            (void)ask(action, body);
        }
    }
    EXPECT_FALSE(ask("format-disk"));
    EXPECT_NE(session.world().velko(), nullptr);
    for (const auto* surface : {"settings", "note", "shelf", "permissionGuide"}) {
        EXPECT_FALSE(ask("dismiss", R"({"surface":")" + std::string(surface) + R"("})")) << "it is not open";
    }
    session.mac().surfaces.surface(Surfaces::Kind::note).open({.content = view::text("a", "b")});
    EXPECT_TRUE(ask("dismiss", R"({"surface":"note","how":"closeButton"})"));
    for (const auto& [speed, isTaken] :
         {std::pair(-1, false), {0, true}, {100'000, true}, {100'001, false}}) {
        EXPECT_EQ(ask("pace", R"({"speed":)" + std::to_string(speed) + "}").has_value(), isTaken) << speed;
    }
    EXPECT_EQ(session.speed(), 100'000);
}

TEST_F(SessionTest, OpensAnAppsMenuAndChoosesFromIt) {
    const auto pid = session.mac().workspace.pids("com.tinyspeck.slackmacgap").front();
    ASSERT_TRUE(ask("icon", R"({"pid":)" + std::to_string(pid) + "}"));
    ASSERT_EQ(session.menus().size(), 1U);
    EXPECT_FALSE(ask("choose", R"({"place":[0]})")) << "a header";
    for (const auto* nowhere : {"{}", R"({"place":"3"})", R"({"place":["3"]})", R"({"place":[3,-1]})"}) {
        EXPECT_FALSE(ask("choose", nowhere)) << nowhere;
        EXPECT_EQ(session.menus().size(), 1U) << "it is still open";
    }
    session.openControlMenu(
        {.anchor = "x", .items = {{.title = "No", .isEnabled = false, .action = [] { FAIL(); }}}});
    EXPECT_FALSE(ask("choose", R"({"place":[0]})")) << "it is greyed";
    session.closeControlMenu();
    EXPECT_TRUE(ask("choose", R"({"place":[3]})"));
    EXPECT_TRUE(session.mac().workspace.pids("com.tinyspeck.slackmacgap").empty());
    EXPECT_TRUE(session.menus().empty());
}

TEST_F(SessionTest, ShowsVelkosMenusWhileOneOfItsWindowsIsOpen) {
    ASSERT_TRUE(play("trust grant"));
    wait(std::chrono::seconds(20));
    session.mac().surfaces.surface(Surfaces::Kind::setup).dismiss(Surface::Dismissal::closeButton);
    wait(std::chrono::seconds(1));
    EXPECT_FALSE(ask("app-menu", R"({"menu":0})")) << "another app is in front";
    EXPECT_EQ(draw(session).regions.at("app-menus"), "");
    session.world().menus().at(0).entries.at(2).action();  // Settings…
    wait(std::chrono::seconds(1));
    EXPECT_TRUE(draw(session).regions.at("app-menus").contains(">Help</button>"));
    EXPECT_FALSE(ask("app-menu", R"({"menu":5})"));
    ASSERT_TRUE(ask("app-menu", R"({"menu":0})"));
    const auto titles = [&] {
        std::string all;
        const view::Menu items = session.menus().front().items;
        for (const view::MenuItem& item : items) {
            all += (item.isEnabled ? "" : "-") + item.title + "|";
        }
        return all;
    };
    EXPECT_EQ(titles(), "About Velko||Settings…||-Hide Velko|-Hide Others|-Show All||Quit Velko|");
    EXPECT_TRUE(ask("choose", R"({"place":[0]})"));
    EXPECT_NE(session.alert(), nullptr);
    ASSERT_TRUE(ask("app-menu", R"({"menu":1})"));
    ASSERT_TRUE(ask("app-menu", R"({"menu":1})"));
    EXPECT_TRUE(session.menus().empty()) << "the second press closes it";
    ASSERT_TRUE(ask("app-menu", R"({"menu":1})"));
    session.mac().surfaces.surface(Surfaces::Kind::settings).dismiss(Surface::Dismissal::closeButton);
    wait(std::chrono::seconds(1));
    EXPECT_TRUE(session.menus().empty()) << "it goes with the last window";
}

TEST_F(SessionTest, ClosesAMenuWithTheSurfaceItHangsFrom) {
    const auto restart = [this] { return ask("restart"); };
    const auto line = [this](const char* text) { return [this, text] { return play(text); }; };
    for (const auto& ending : std::vector<std::function<Done()>>{
             line("velko quit"), line("velko crash"), restart, line("close shelf"), line("click outside"),
             [this] { return ask("broom"); },
             [this] {
                 const auto pid = session.mac().workspace.pids("com.tinyspeck.slackmacgap").front();
                 const Done done = ask("icon", R"({"pid":)" + std::to_string(pid) + "}");
                 session.mac().closeMenu();
                 return done;
             }}) {
        ASSERT_NO_FATAL_FAILURE(openTileMenu());
        EXPECT_TRUE(ending());
        EXPECT_TRUE(session.menus().empty());
        EXPECT_FALSE(ask("choose", R"({"place":[0]})"));
    }
}

TEST_F(SessionTest, PutsTheBroomBackWhereItWas) {
    const auto place = [this] {
        const auto& slots = session.mac().menuBar().slots();
        const auto own = session.mac().processes.ownPID();
        return std::ranges::find(slots, own, &SimulatedMenuBar::Slot::pid) - slots.begin();
    };
    const auto before = place();
    for (const auto* way : {"velko quit", "velko crash"}) {
        EXPECT_TRUE(play(way));
        EXPECT_TRUE(play("velko start"));
        EXPECT_EQ(place(), before) << way;
    }
    EXPECT_TRUE(ask("restart"));
    EXPECT_EQ(place(), before);
}

TEST_F(SessionTest, LaunchesOnlyWhatDoesNotRun) {
    EXPECT_TRUE(play("launch Linear"));
    EXPECT_FALSE(session.mac().windows.frontMenus(24));
    EXPECT_TRUE(play("launch Linear"));
    EXPECT_TRUE(session.mac().windows.frontMenus(24)) << "it comes to the front";
    EXPECT_EQ(countOf("com.linear"), 1U);
    EXPECT_TRUE(play("launch ."));
    EXPECT_EQ(session.mac().processes.running().back().app.name, ".") << "no app is without a name";
}

TEST_F(SessionTest, KeepsItsClockWithinWhatTheMachineCanTell) {
    using std::chrono::year_month_day;
    for (const auto* line : {"wait 3650 days", "sleep 3650 days", "clock forward 3650 days"}) {
        int times = 0;
        while (times < 40 && play(line)) {
            ++times;
        }
        EXPECT_GT(times, 0) << line;
        EXPECT_LT(times, 40) << line;
        EXPECT_GE(session.jumpLeft(), MainThread::Uptime(0));
        session.stopJump();
        EXPECT_TRUE(play("clock back 3650 days"));
    }
    const auto day = std::chrono::floor<std::chrono::days>(session.mac().mainThread.date());
    EXPECT_LT(year_month_day(day).year(), std::chrono::year(2200));
}

TEST_F(SessionTest, LetsTimeJumpInTurnsThatEndOnTime) {
    ASSERT_TRUE(ask("desk", R"({"line":"wait 2 h"})"));
    const auto before = session.mac().mainThread.date();
    session.pass(std::chrono::seconds(0), std::chrono::seconds(0));
    EXPECT_GT(session.jumpLeft(), std::chrono::hours(1)) << "one slice, and the turn was over";
    session.pass(std::chrono::seconds(0), std::chrono::hours(1));
    EXPECT_EQ(session.jumpLeft(), MainThread::Uptime(0));
    EXPECT_EQ(session.mac().mainThread.date() - before, std::chrono::hours(2));
}

TEST_F(SessionTest, CatchesUpWithASecondOfRealTimeAtMost) {
    for (const int speed : {1, 60}) {
        ASSERT_TRUE(ask("pace", R"({"speed":)" + std::to_string(speed) + "}"));
        for (const auto& [real, passed] : {std::pair(400, 400), {999, 999}, {1001, 1000}, {90'000, 1000}}) {
            const auto before = session.mac().mainThread.date();
            session.pass(std::chrono::milliseconds(real), std::chrono::hours(1));
            EXPECT_EQ(session.mac().mainThread.date() - before, speed * std::chrono::milliseconds(passed));
        }
    }
}

TEST_F(SessionTest, QuitsVelkoWhenItAsksTo) {
    session.mac().appPorts().application.terminate();
    session.settle();
    EXPECT_EQ(session.world().velko(), nullptr);
    EXPECT_FALSE(session.mac().application.isTerminating);
    EXPECT_EQ(draw(session).regions.at("surface-setup"), "");
    EXPECT_TRUE(ask("desk", R"({"line":"velko start"})"));
    EXPECT_NE(session.world().velko(), nullptr);
}

TEST_F(SessionTest, KeepsFilesWithinTheDocumentsFolder) {
    for (const auto* name : {"", ".", "..", "../x", "a/b", "a\\b", ".hidden", "a\nb"}) {
        EXPECT_FALSE(isPlainFileName(name)) << name;
    }
    EXPECT_TRUE(isPlainFileName("My layout.velko"));
    ASSERT_TRUE(ask("desk", R"({"line":"trust grant"})"));
    wait(std::chrono::seconds(20));
    session.world().velko()->transfer().importLayout();
    ASSERT_TRUE(session.mac().dialogs.isPanelOpen());
    EXPECT_FALSE(ask("panel", R"({"file":"../layout.json","text":"broken"})"));
    const auto pipe = session.world().documents() / "pipe";
    std::filesystem::create_directories(session.world().documents());
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int reader =
        ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);  // without a reader, a writer waits for ever
    for (const auto* body : {R"({"file":"pipe","text":"broken"})", R"({"file":"pipe"})"}) {
        EXPECT_FALSE(ask("panel", body)) << "it is no file";
    }
    ::close(reader);
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    EXPECT_TRUE(ask("panel", R"({"file":"Pasted.velko","text":"broken"})"));
    wait(std::chrono::seconds(1));
    ASSERT_NE(session.alert(), nullptr);
    EXPECT_TRUE(ask("alert"));
    EXPECT_EQ(session.alert(), nullptr);
    session.mac().dialogs.alert({.title = "Broken", .message = "It is."});
    ASSERT_NE(session.alert(), nullptr);
    EXPECT_TRUE(play("velko quit"));
    EXPECT_EQ(session.alert(), nullptr) << "an alert goes with its program";
}

TEST(Feed, SendsWhatChangedToAtMostEightReaders) {
    Feed feed;
    const auto first = feed.subscribe();
    feed.publish({.regions = {{"bar", "a"}, {"log", "x"}}, .facts = {.value = true}});
    EXPECT_NE(first->next(), std::nullopt);
    EXPECT_EQ(first->next(), std::nullopt);
    feed.publish({.regions = {{"bar", "b"}, {"log", "x"}}, .facts = {.value = true}});
    const auto changed = Json::parse(first->next().value_or("")).value();
    EXPECT_EQ(changed, Json::parse(R"({"regions":{"bar":"b"}})").value());
    std::vector<std::shared_ptr<Feed::Reader>> others;
    for (std::size_t number = 1; number < Feed::mostReaders; ++number) {
        others.push_back(feed.subscribe());
    }
    EXPECT_EQ(feed.subscribe(), nullptr);
    others.pop_back();
    EXPECT_NE(feed.subscribe(), nullptr);
}

}  // namespace
}  // namespace velko::web
