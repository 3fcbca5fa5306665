#include <algorithm>
#include <chrono>
#include <map>
#include <string>
#include <vector>

#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Velko/App/AppMenu.h"
#include "Velko/App/Diagnostics.h"
#include "Velko/App/MoveToApplications.h"
#include "Velko/Flows/Questions.h"
#include "tests/Velko/ProgramOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class AppMenuTest : public ProgramOnMac {
 protected:
    /// The entry with that title, or a fault.
    [[nodiscard]] AppMenu::Entry entry(const std::string& title) const {
        for (const AppMenu::Menu& menu : app->menus()) {
            const auto found = std::ranges::find(menu.entries, title, &AppMenu::Entry::title);
            if (found != menu.entries.end()) {
                return *found;
            }
        }
        ADD_FAILURE() << "no entry " << title;
        return {};
    }
    /// The entry as it shows, with brackets if nobody can choose it.
    [[nodiscard]] std::string shown(const std::string& title) const {
        const AppMenu::Entry found = entry(title);
        const AppMenu::State state = found.state ? found.state() : AppMenu::State{.title = found.title};
        return state.isEnabled ? state.title : "(" + state.title + ")";
    }
};

TEST_F(AppMenuTest, GivesEachKeyToOneEntryAndEachEntrySomethingToDo) {
    launch(setUp());
    std::map<std::string, std::string> keys;
    for (const AppMenu::Menu& menu : app->menus()) {
        for (const AppMenu::Entry& each : menu.entries) {
            EXPECT_TRUE(each.title.empty() || each.command || each.action) << each.title;
            const std::string key =
                std::string(each.withOption ? "option " : "") + (each.withShift ? "shift " : "") + each.key;
            EXPECT_TRUE(each.key == 0 || keys.emplace(key, each.title).second) << each.title;
        }
    }
    EXPECT_EQ(keys.at(","), "Settings…");
    entry("Settings…").action();
    EXPECT_TRUE(surface(Surfaces::Kind::settings).isOpen());
}

TEST_F(AppMenuTest, TakesTheLastChangeBackAndDoesItAgain) {
    launch(setUp());
    EXPECT_EQ(shown("Undo") + " " + shown("Redo"), "(Undo) (Redo)");
    app->controller().place("com.example.chat", Section::tucked);
    const std::string undo = shown("Undo");
    EXPECT_TRUE(undo.starts_with("Undo ") && undo.size() > 5) << undo;
    entry("Undo").action();
    EXPECT_TRUE(app->controller().values().layout.sections.empty());
    EXPECT_EQ(shown("Undo") + " " + shown("Redo"), "(Undo) Redo" + undo.substr(4));
    entry("Redo").action();
    EXPECT_EQ(app->controller().values().layout.section("com.example.chat"), Section::tucked);
}

TEST_F(AppMenuTest, CopiesDiagnosticsThatNameNobody) {
    mac.launch({.bundleID = "com.secret.chat", .name = "Secret Chat", .icons = {{.title = "12 unread"}}});
    Layout layout = setUp();
    layout.place("com.secret.chat", Section::tucked);
    launch(layout);
    mac.advance(3s);
    app->controller().place("com.secret.chat", Section::bar);
    app->controller().autopilot().askToQuit("com.secret.chat");
    log.log("debug", "  Secret Chat | com.secret.chat | pid 7 | \"12 unread\"");
    log.log("layout", "imported 3 placements from /Users/jane doe/My Secret.velko");
    entry("Copy Diagnostics").action();
    const std::string& text = mac.pasteboard.content;
    for (const char* secret : {"secret", "Secret", "unread", "jane", "/Users", folder.path().c_str()}) {
        EXPECT_FALSE(text.contains(secret)) << secret << "\n" << text;
    }
    for (const char* needed : {"Velko 1.2", "[layout] loaded 1 placements from (layout)", "app-1 -> bar",
                               "All is well.", "1 displays, 0 with a notch", "com.apple.MenuBarAgent",
                               "imported 3 placements from (a path)", "asked an app to quit"}) {
        EXPECT_TRUE(text.contains(needed)) << needed << "\n" << text;
    }
    EXPECT_EQ(shown("Velko Documentation"), "(Velko Documentation (not named in this build))");
}

TEST_F(AppMenuTest, MovesToApplicationsAndLosesNothing) {
    using Deeds = std::vector<std::string>;
    launch(setUp());
    const std::filesystem::path applications = folder.path() / "Applications";
    const std::string there = (applications / "Velko.app").string();
    MoveToApplications move(mac.appPorts(), log, "/Users/x/Velko.app", applications);
    mac.application.refusedDeed = "open";
    move.start();
    EXPECT_EQ(mac.dialogs.alerts().size(), 1U);
    EXPECT_FALSE(mac.application.isTerminating) << "the copy does not run";
    mac.application.refusedDeed.clear();
    mac.application.fileDeeds.clear();
    std::filesystem::create_directories(there);
    move.start();
    EXPECT_TRUE(mac.application.fileDeeds.empty()) << "it asks before it replaces";
    mac.dialogs.answer(false);
    mac.advance(1s);
    EXPECT_TRUE(mac.application.fileDeeds.empty());
    move.start();
    mac.dialogs.answer(true);
    mac.advance(1s);
    EXPECT_EQ(mac.application.fileDeeds, (Deeds{"trash " + there, "copy /Users/x/Velko.app to " + there,
                                                "open " + there, "trash /Users/x/Velko.app"}));
    EXPECT_TRUE(mac.application.isTerminating);
}

TEST(Anonymiser, GivesTheSameAppTheSameNumber) {
    Anonymiser anonymous({{.text = "/h/layout.json", .replacement = "(layout)"}}, {"app.b"});
    EXPECT_EQ(anonymous("open com.c.d-e: app.b, com.c.d-e."), "open app-1: app-2, app-1.");
    EXPECT_EQ(anonymous("[popout] app.b changed: out for 10.0 seconds"),
              "[popout] app-2 changed: out for 10.0 seconds");
    EXPECT_EQ(anonymous("save failed: /h/layout.json: No space left"),
              "save failed: (layout): No space left");
    EXPECT_EQ(anonymous("macOS 27.0.1, com.apple.x and app.velko.mac in /System/A/b.c"),
              "macOS 27.0.1, com.apple.x and app.velko.mac in /System/A/b.c");
}

}  // namespace
}  // namespace velko
