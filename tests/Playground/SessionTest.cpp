#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "Playground/Web/Actions.h"
#include "Playground/Web/Feed.h"
#include "Playground/Web/Panels.h"
#include "Playground/Web/Picture.h"
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
    for (const auto* action :
         {"act", "menu", "choose", "icon", "dismiss", "pace", "panel", "pointer", "desk"}) {
        for (const auto* body :
             {"{}", "[]", "null", R"({"surface":7,"id":[],"value":{},"place":[-1],"pid":-1})",
              R"({"surface":"note","id":"none","value":1e99,"place":[99,99],"pid":99999999999})",
              R"({"speed":-1,"file":"../../etc/passwd","line":"\u0000"})"}) {
            (void)ask(action, body);
        }
    }
    EXPECT_FALSE(ask("format-disk"));
    EXPECT_NE(session.stage().velko(), nullptr);
}

TEST_F(SessionTest, OpensAnAppsMenuAndChoosesFromIt) {
    const auto pid = session.mac().workspace.pids("com.tinyspeck.slackmacgap").front();
    ASSERT_TRUE(ask("icon", R"({"pid":)" + std::to_string(pid) + "}"));
    ASSERT_EQ(session.menus().size(), 1U);
    EXPECT_FALSE(ask("choose", R"({"place":[0]})")) << "a header";
    EXPECT_TRUE(ask("choose", R"({"place":[3]})"));
    EXPECT_TRUE(session.mac().workspace.pids("com.tinyspeck.slackmacgap").empty());
    EXPECT_TRUE(session.menus().empty());
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

TEST_F(SessionTest, QuitsVelkoWhenItAsksTo) {
    session.mac().appPorts().application.terminate();
    session.settle();
    EXPECT_EQ(session.stage().velko(), nullptr);
    EXPECT_EQ(draw(session).regions.at("surface-setup"), "");
    EXPECT_TRUE(ask("desk", R"({"line":"velko start"})"));
    EXPECT_NE(session.stage().velko(), nullptr);
}

TEST_F(SessionTest, KeepsFilesWithinTheDocumentsFolder) {
    for (const auto* name : {"", ".", "..", "../x", "a/b", "a\\b", ".hidden", "a\nb"}) {
        EXPECT_FALSE(isPlainFileName(name)) << name;
    }
    EXPECT_TRUE(isPlainFileName("My layout.velko"));
    ASSERT_TRUE(ask("desk", R"({"line":"trust grant"})"));
    wait(std::chrono::seconds(20));
    session.stage().velko()->transfer().importLayout();
    ASSERT_TRUE(session.mac().dialogs.isPanelOpen());
    EXPECT_FALSE(ask("panel", R"({"file":"../layout.json","text":"broken"})"));
    EXPECT_TRUE(ask("panel", R"({"file":"Pasted.velko","text":"broken"})"));
    wait(std::chrono::seconds(1));
    ASSERT_NE(session.alert(), nullptr);
    EXPECT_TRUE(ask("alert"));
    EXPECT_EQ(session.alert(), nullptr);
}

TEST(Feed, SendsWhatChangedToAtMostEightReaders) {
    Feed feed;
    const auto first = feed.subscribe();
    feed.publish({.regions = {{"bar", "a"}, {"log", "x"}}, .facts = {.value = true}});
    EXPECT_NE(first->next(std::chrono::milliseconds(0)), std::nullopt);
    EXPECT_EQ(first->next(std::chrono::milliseconds(0)), std::nullopt);
    feed.publish({.regions = {{"bar", "b"}, {"log", "x"}}, .facts = {.value = true}});
    const auto changed = Json::parse(first->next(std::chrono::milliseconds(0)).value_or("")).value();
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
