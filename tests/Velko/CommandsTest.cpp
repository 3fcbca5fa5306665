#include "Simulator/Desktop/SimulatedCommandDoor.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Velko/Commands/CommandDesk.h"
#include "Velko/Commands/Messages.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/ShowApp.h"
#include "VelkoCore/Files/Json.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using commands::Answer;

/// Velko with a desk, and callers who come to its door.
class Commands : public VelkoOnMac {
 protected:
    Commands() {
        layout.hasCompletedSetup = true;
        launch("com.a.slack", Section::tucked);
        launch("com.b.zoom", Section::bar);
        launch("com.c.figma", Section::buried);
        start();
        desk = std::make_unique<CommandDesk>(faceParts());
        desk->open();
        watch = velko->observe([this] { desk->sync(); });
        velko->onChange = [this] { desk->sync(); };
    }
    ~Commands() override { watch.end(); }

    CommandDoor::Caller come(const std::vector<std::string>& words) {
        const CommandDoor::Caller caller = next++;
        EXPECT_TRUE(mac.commands.ask(caller, commands::requestLine(words)));
        return caller;
    }

    /// What a caller has heard so far, and the status at the end, as in "out|error|1".
    std::string heard(CommandDoor::Caller caller) {
        std::string out;
        std::string error;
        std::string status;
        commands::Lines lines;
        EXPECT_TRUE(lines.add(mac.commands.heard(caller)));
        while (const auto line = lines.next()) {
            const auto answer = commands::readAnswer(*line).value_or(Answer{.status = 99});
            out += answer.kind == Answer::Kind::out ? answer.text : "";
            error += answer.kind == Answer::Kind::error ? answer.text : "";
            status += answer.kind == Answer::Kind::exit ? std::to_string(answer.status) : "";
        }
        EXPECT_EQ(status.empty(), mac.commands.isWaiting(caller)) << "who has an answer is let go";
        return out + "|" + error + "|" + status;
    }

    std::string say(const std::vector<std::string>& words) {
        const auto caller = come(words);
        pass(200ms);
        return heard(caller);
    }

    CommandDoor::Caller next = 1;
    std::unique_ptr<CommandDesk> desk;
    Subscription watch;
};

TEST_F(Commands, Present) {
    EXPECT_EQ(say({"present", "on"}), "|Presenting is switched off in Velko's settings.\n|1");
    velko->preferences().setSwitch(Switch::presenting, true);
    EXPECT_EQ(say({"present", "on"}), "||0");
    EXPECT_EQ(say({"present", "on"}), "||0") << "it goes on";
    EXPECT_FALSE(shows("com.b.zoom"));
    const std::string still =
        "|You are presenting, so hidden icons stay hidden. “velko present off” ends that.\n|1";
    EXPECT_EQ(say({"show"}), still);
    EXPECT_EQ(say({"toggle"}), still);
    EXPECT_EQ(say({"open", "slack"}), "|com.a.slack stays hidden while you are presenting.\n|1");
    EXPECT_NE(say({"status", "--json"}).find(R"("state": "presenting")"), std::string::npos);
    EXPECT_EQ(say({"present", "off"}), "||0");
    EXPECT_TRUE(shows("com.b.zoom") && !shows("com.a.slack"));
}

TEST_F(Commands, BringOutAndTuckAway) {
    EXPECT_EQ(say({"show"}), "||0");
    EXPECT_TRUE(shows("com.a.slack") && !shows("com.c.figma"));
    EXPECT_EQ(say({"show"}), "||0") << "it stays out";
    EXPECT_TRUE(shows("com.a.slack"));
    EXPECT_EQ(say({"show", "--buried"}), "||0");
    EXPECT_TRUE(shows("com.c.figma"));
    EXPECT_EQ(say({"show", "--buried"}), "||0");
    EXPECT_TRUE(shows("com.c.figma")) << "twice is no toggle";
    EXPECT_EQ(say({"tuck"}), "||0");
    EXPECT_FALSE(shows("com.a.slack") || shows("com.c.figma"));
    EXPECT_EQ(say({"toggle"}), "||0");
    EXPECT_TRUE(shows("com.a.slack"));
    velko->showMe().start("com.c.figma");
    EXPECT_EQ(say({"tuck"}), "||0");
    EXPECT_FALSE(shows("com.a.slack") || shows("com.c.figma"));
    EXPECT_TRUE(shows("com.b.zoom"));
}

TEST_F(Commands, KeepIconsOutForAsLongAsTheyAreRepeated) {
    for (int times = 0; times < 5; ++times) {
        EXPECT_EQ(say({"show"}), "||0");
        pass(4s);
        EXPECT_TRUE(shows("com.a.slack")) << times;
    }
    EXPECT_EQ(timesLogged("[reveal]"), 1);
    pass(4s);
    EXPECT_FALSE(shows("com.a.slack"));
}

TEST_F(Commands, FindAnAppByWhatSomebodyCallsIt) {
    launch("com.d.drive-one", Section::bar);
    mac.launch({.bundleID = "com.e.drive", .name = "Google Drive", .icons = {{.title = "a"}}});
    mac.launch({.bundleID = "com.f.docs", .name = "Google Docs", .icons = {{.title = "a"}}});
    pass(20s);
    EXPECT_EQ(say({"place", "com.a.slack", "buried"}), "||0");
    EXPECT_EQ(values().layout.section("com.a.slack"), Section::buried);
    EXPECT_EQ(say({"place", "google dr", "buried"}), "||0");
    EXPECT_EQ(values().layout.section("com.e.drive"), Section::buried);
    EXPECT_EQ(say({"place", "goo", "bar"}),
              "|“goo” fits more than one app:\n  Google Drive  com.e.drive\n  Google Docs  com.f.docs\n|1");
    EXPECT_EQ(say({"place", "Nothing", "bar"}), "|No app in the menu bar is called “Nothing”.\n|1");
    EXPECT_EQ(say({"place", "!", "bar"}), "|No app in the menu bar is called “!”.\n|1");
    EXPECT_EQ(say({"place", velko->ownBundleID(), "buried"}).back(), '1') << "the broom stays";
    mac.quit(mac.workspace.pids("com.b.zoom").front());
    pass(20s);
    EXPECT_EQ(say({"place", "com.b.zoom", "tucked"}), "||0") << "a place that it has already may change";
    EXPECT_EQ(say({"open", "com.b.zoom"}).back(), '1');
}

TEST_F(Commands, OpenTheMenuOfAHiddenApp) {
    const auto caller = come({"open", "com.c.figma"});
    EXPECT_EQ(heard(caller), "||");
    pass(1s);
    EXPECT_EQ(heard(caller), "||0");
    EXPECT_TRUE(mac.windows.menuOwner());
    mac.closeMenu();
    pass(2s);
    const auto pid = mac.workspace.pids("com.a.slack").front();
    mac.hang(pid, true);
    const auto late = come({"open", "com.a.slack"});
    pass(6s);
    EXPECT_EQ(heard(late).back(), '1');
    EXPECT_FALSE(mac.commands.isWaiting(late));
}

TEST_F(Commands, WaitWithoutHoldingUpOthers) {
    const auto waiting = come({"wait-until", "revealed"});
    const auto impatient = come({"wait-until", "revealed", "--timeout", "2"});
    const auto gone = come({"wait-until", "revealed"});
    const std::size_t work = mac.registered().work;
    EXPECT_EQ(say({"wait-until", "tidy"}), "||0");
    EXPECT_EQ(mac.registered().work, work) << "who has an answer is waited for no longer";
    mac.commands.leave(gone);
    pass(3s);
    EXPECT_EQ(heard(impatient), "|The icons are not out yet.\n|1");
    EXPECT_EQ(heard(waiting), "||");
    EXPECT_EQ(say({"show"}), "||0");
    EXPECT_EQ(heard(waiting), "||0");
    EXPECT_EQ(mac.commands.heard(gone), "");
    const auto tidy = come({"wait-until", "tidy"});
    pass(20s);
    EXPECT_EQ(heard(tidy), "||0") << "the icons tuck themselves away";
}

TEST_F(Commands, FollowTheLogUntilTheCallerLeaves) {
    const auto caller = come({"log", "-f"});
    EXPECT_TRUE(heard(caller).contains("Velko 1.2 starting"));
    EXPECT_EQ(say({"place", "com.a.slack", "buried"}), "||0");
    EXPECT_TRUE(heard(caller).contains("com.a.slack -> buried\n"));
    mac.commands.leave(caller);
    const std::string before = mac.commands.heard(caller);
    EXPECT_EQ(say({"place", "com.a.slack", "bar"}), "||0");
    EXPECT_EQ(mac.commands.heard(caller), before);
    EXPECT_TRUE(say({"log"}).contains("com.a.slack -> bar\n"));
}

TEST_F(Commands, ReportWhatShows) {
    EXPECT_EQ(say({"status"}), "Tidy. 2 apps are hidden.\n||0");
    EXPECT_EQ(say({"list"}).substr(0, 46), "buried\tcom.c.figma\tcom.c.figma\thidden\nbar\tcom.");
    const auto json = [this](const char* what) {
        const std::string all = say({what, "--json"});
        return std::get<Json::Object>(Json::parse(all.substr(0, all.size() - 3))->value);
    };
    EXPECT_EQ(json("status").at("state"), Json{std::string("tidy")});
    EXPECT_EQ(std::get<Json::Array>(json("list").at("apps").value).size(), 3U);
    mac.revokeTrust();
    pass(10s);
    EXPECT_EQ(say({"show"}), "|Velko needs permission to tidy your menu bar.\n|1");
    EXPECT_EQ(json("status").at("health"), Json{std::string("permission-missing")});
}

TEST_F(Commands, TakeTheLayoutToAFileAndBack) {
    const std::string file = (folder.path() / "mine.velko").string();
    EXPECT_EQ(say({"layout", "export", file}), "||0");
    EXPECT_EQ(say({"place", "com.a.slack", "bar"}), "||0");
    EXPECT_EQ(say({"layout", "import", file}), "||0");
    EXPECT_EQ(saved().section("com.a.slack"), Section::tucked);
    EXPECT_EQ(say({"layout", "import", "mine.velko"}), "|A file needs its whole path.\n|2");
    EXPECT_EQ(say({"layout", "import", file + "x"}).back(), '1');
    EXPECT_EQ(say({"layout", "export", "/proc/nowhere/a"}).back(), '1');
    write("{");
    velko->loadLayout();
    EXPECT_TRUE(say({"place", "com.a.slack", "bar"}).contains("can't be read"));
    EXPECT_EQ(say({"ask", "off"}).back(), '1');
    EXPECT_EQ(say({"layout", "import", file}), "||0") << "this repairs it";
    EXPECT_EQ(say({"ask", "off"}), "||0");
    EXPECT_FALSE(saved().askAboutNewIcons);
}

TEST_F(Commands, AreRefusedIfTheyAreNotUnderstood) {
    EXPECT_EQ(say({"dance"}), "|There is no command “dance”.\n|2");
    EXPECT_EQ(say({"version"}), "|That is for the caller itself to answer.\n|2");
    EXPECT_TRUE(mac.commands.ask(500, "{"));
    EXPECT_EQ(heard(500).back(), '2');
    desk.reset();
    EXPECT_FALSE(mac.commands.isOpen());
}

TEST_F(Commands, FromAddressesAskBeforeTheyChangeAnything) {
    desk->openAddress("velko:show");
    pass(1s);
    EXPECT_TRUE(shows("com.a.slack"));
    desk->openAddress("velko:place/com.a.slack/bar");
    ASSERT_NE(mac.dialogs.question(), nullptr);
    EXPECT_TRUE(mac.dialogs.question()->message.contains("velko:place/com.a.slack/bar"));
    desk->openAddress("velko:ask/off");
    EXPECT_TRUE(logged("another one still waits"));
    mac.dialogs.answer(false);
    pass(1s);
    EXPECT_EQ(values().layout.section("com.a.slack"), Section::tucked);
    desk->openAddress("velko:place/com.a.slack/bar");
    mac.dialogs.answer(true);
    pass(1s);
    EXPECT_EQ(values().layout.section("com.a.slack"), Section::bar);
    desk->openAddress("velko:place/nobody/bar");
    desk->openAddress("velko:log");
    EXPECT_EQ(mac.dialogs.question(), nullptr);
    EXPECT_TRUE(logged("address velko:log: Addresses may not do that."));
}

TEST_F(Commands, FromAddressesComeTenInASecond) {
    for (int times = 0; times < 25; ++times) {
        desk->openAddress("velko:toggle");
    }
    pass(1s);
    EXPECT_EQ(timesLogged("[reveal] toggle: "), 10);
    EXPECT_EQ(timesLogged("too many at once"), 1);
    desk->openAddress("velko:show");
    pass(100ms);
    EXPECT_TRUE(shows("com.a.slack"));
}

TEST_F(Commands, ListEarlierLayoutsAndRestoreOne) {
    EXPECT_EQ(say({"history"}), "||0");
    EXPECT_EQ(say({"place", "com.b.zoom", "buried"}), "||0");
    const std::string listed = say({"history"});
    EXPECT_TRUE(listed.starts_with("1\t")) << listed;
    EXPECT_TRUE(listed.ends_with("\tchange\t1 app lies elsewhere: com.b.zoom was in the bar.\n||0"))
        << listed;
    const std::string json = say({"history", "--json"});
    EXPECT_TRUE(json.contains("\"cause\": \"change\"") && json.contains("\"number\": 1")) << json;
    desk->openAddress("velko:history/restore/1");
    EXPECT_EQ(mac.dialogs.question(), nullptr) << "no page restores anything";
    EXPECT_EQ(values().layout.section("com.b.zoom"), Section::buried);
    EXPECT_EQ(say({"history", "restore", "1"}), "||0");
    EXPECT_EQ(values().layout.section("com.b.zoom"), Section::bar);
    EXPECT_TRUE(say({"history"}).starts_with("2\t"));
    EXPECT_EQ(say({"history", "restore", "9"}), "|There is no earlier layout with the number 9.\n|1");
    EXPECT_TRUE(say({"history", "restore", "first"}).ends_with("|2"));
    EXPECT_TRUE(say({"history", "restore"}).ends_with("|2"));
    std::filesystem::remove_all(folder.path() / "Velko" / "history");
    writeFile(folder.path() / "Velko" / "history", "in the way");
    EXPECT_TRUE(say({"history"}).ends_with("the folder cannot be read: Not a directory\n|1"));
    EXPECT_TRUE(say({"history", "--json"}).ends_with("|1"));
}

}  // namespace
}  // namespace velko
