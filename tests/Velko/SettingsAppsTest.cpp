#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "tests/Velko/SettingsOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class SettingsAppsTest : public SettingsOnMac {
 protected:
    [[nodiscard]] std::vector<std::string> names() {
        std::vector<std::string> result;
        view::walk(*window().content(), [&](const view::Node& node) {
            if (node.id.starts_with("name:")) {
                result.push_back(std::get<view::Text>(node.content).text);
            }
        });
        return result;
    }
};

TEST_F(SettingsAppsTest, AreEveryAppWithIconsOrASectionByName) {
    launch("com.example.1", "zebra", Section::bar);
    launch("com.example.2", "Apple Pie", Section::tucked);
    const ProcessID hidden = launch("com.example.3", "broth", Section::tucked);
    layout.place("com.example.gone", Section::buried);
    startSettings();
    EXPECT_EQ(names(), (std::vector<std::string>{"Apple Pie", "broth", "com.example.gone", "zebra"}));
    EXPECT_EQ(words("usage:com.example.gone"), "not on this Mac");
    EXPECT_TRUE(std::get<view::Text>(find("name:com.example.gone")->content).isSecondary);
    set("section:com.example.gone", std::int64_t{0});
    EXPECT_EQ(saved().section("com.example.gone"), Section::bar) << "it can be sorted all the same";
    mac.removeIcon(hidden, 0);
    mac.session.changeSpace();
    pass(3s);
    EXPECT_EQ(words("usage:com.example.3"), "running, without an icon right now");
    const view::MenuItem entry = view::menuOf(*window().content(), "more:com.example.3").at(0);
    EXPECT_FALSE(entry.isEnabled);
    EXPECT_EQ(entry.help, "broth has no icon right now.");
    launch("com.example.new");
    pass(20s);
    EXPECT_EQ(words("usage:com.example.new"), "New here. Where does it go?");
    EXPECT_EQ(standing("section:com.example.new"), "") << "so that each of them is an answer";
    set("section:com.example.new", std::int64_t{1});
    EXPECT_TRUE(logged("[layout] com.example.new -> tucked (new icon answered)"));
    EXPECT_EQ(standing("section:com.example.new"), "Tucked");
}

TEST_F(SettingsAppsTest, AreListedBySectionOnRequest) {
    launch("com.example.1", "One", Section::bar);
    launch("com.example.2", "Two", Section::tucked);
    launch("com.example.3", "Three", Section::tucked);
    startSettings();
    EXPECT_EQ(std::get<view::Picker>(find("filter")->content).options,
              (std::vector<std::string>{"All 3", "Bar 1", "Tucked 2", "Buried 0"}));
    set("filter", std::int64_t{2});
    EXPECT_EQ(names(), (std::vector<std::string>{"Three", "Two"}));
    set("section:com.example.2", std::int64_t{0});
    EXPECT_EQ(names(), (std::vector<std::string>{"Three", "Two"})) << "until another filter is chosen";
    openPage(1);
    openPage(0);
    EXPECT_EQ(standing("filter"), "Tucked 1") << "the window remembers";
    set("filter", std::int64_t{2});
    EXPECT_EQ(names(), std::vector<std::string>{"Three"});
    set("filter", std::int64_t{3});
    EXPECT_EQ(words("apps:empty"), "No app is buried.");
    set("filter", std::int64_t{2});
    set("section:com.example.3", std::int64_t{0});
    set("filter", std::int64_t{2});
    EXPECT_EQ(words("apps:empty"), "No app is tucked.");
}

TEST_F(SettingsAppsTest, AreOnlyCountedWhereMoreAreAtRestThanAnybodyReads) {
    launch("z.example.1", "Runs", Section::tucked);
    for (int app = 0; app < 1000; ++app) {
        layout.place("com.example." + std::to_string(app), app % 2 == 0 ? Section::buried : Section::tucked);
    }
    startSettings();
    EXPECT_EQ(names().size(), 301U);
    EXPECT_EQ(words("name:z.example.1"), "Runs");
    EXPECT_EQ(words("apps:more"), "And 700 more that aren't running.");
    set("filter", std::int64_t{3});
    EXPECT_EQ(names().size(), 300U);
    EXPECT_EQ(words("apps:more"), "And 200 more that aren't running.");
    EXPECT_EQ(standing("filter"), "Buried 500");
    EXPECT_EQ(words("gone:what"), "1000 apps aren't on this Mac any more.")
        << "those that are only counted too";
    set("forget-gone");
    EXPECT_EQ(standing("filter"), "Buried 0");
    EXPECT_EQ(saved().sections.size(), 1U);
}

TEST_F(SettingsAppsTest, AreCountedForAScreenReaderWhenTheUserStopsTyping) {
    launch("com.example.1", "Slack", Section::bar);
    launch("com.example.2", "Sleeve", Section::tucked);
    launch("com.example.3", "Other", Section::tucked);
    startSettings();
    const auto type = [&](const char* field, const char* text) {
        EXPECT_TRUE(window().perform(field, text));
    };
    const auto said = [&] { return mac.surfaces.announcements(); };
    type("search", "s");
    pass(300ms);
    type("search", "sl");
    pass(300ms);
    EXPECT_TRUE(said().empty()) << "words for each key would interrupt each other";
    pass(300ms);
    EXPECT_EQ(said(), std::vector<std::string>{"2 results"});
    EXPECT_EQ(words("selected:none"), "2 apps found. Select several to place them together.");
    type("search", "slx");
    type("search", "");
    pass(1s);
    type("search", "slx");
    openPage(3);
    EXPECT_EQ(said().size(), 1U) << "nobody searches any more";
    type("staying:search", "oth");
    pass(1s);
    EXPECT_EQ(said().back(), "1 result");
}

TEST_F(SettingsAppsTest, AreNotSaidToLackAnIconThatVelkoCannotSee) {
    launch("com.example.app", "App", Section::tucked);
    const ProcessID other = launch("com.example.other", "Other", Section::tucked);
    mac.revokeTrust();
    startSettings();
    EXPECT_EQ(words("name:com.example.app"), "App");
    EXPECT_EQ(find("usage:com.example.app"), nullptr);
    mac.grantTrust();
    pass(3s);
    EXPECT_EQ(words("usage:com.example.app"), "40 MB");
    mac.revokeTrust();
    pass(3s);
    mac.quit(other);
    pass(31s);
    EXPECT_EQ(words("usage:com.example.other"), "not running") << "what runs is known all the same";
    EXPECT_EQ(words("usage:com.example.app"), "40 MB · 0% CPU");
    const view::Menu menu = view::menuOf(*window().content(), "more:com.example.app");
    EXPECT_FALSE(menu.at(0).isEnabled);
    EXPECT_EQ(menu.at(0).help, "Velko hides nothing right now.");
    mac.framework.installed = false;
    restart();
    EXPECT_EQ(find("usage:com.example.app"), nullptr);
}

TEST_F(SettingsAppsTest, SayWhatTheyUseAndWhetherThatIsALot) {
    mac.processes.setMemory(launch("com.example.hog", "Hog", Section::bar), 500ULL << 20U);
    launch("com.example.mouse", "Mouse", Section::bar);
    startSettings();
    EXPECT_EQ(words("usage:com.example.hog"), "500 MB");
    pass(31s);
    EXPECT_EQ(words("usage:com.example.hog"), "500 MB · 0% CPU") << "the open window follows";
    EXPECT_EQ(find("usage:com.example.hog")->help,
              "Uses a lot for a menu bar app. You can quit it from the ••• menu.");
    EXPECT_EQ(words("heavy:com.example.hog"), "Hog uses a lot");
    EXPECT_EQ(find("usage:com.example.mouse")->help, "Memory and CPU this app uses in the background");
    EXPECT_EQ(find("heavy:com.example.mouse"), nullptr);
}

TEST_F(SettingsAppsTest, CanBeShownKeptAndAskedToQuit) {
    launch("com.example.app", "App", Section::tucked);
    launch("com.example.other", "Other", Section::bar);
    layout.place("com.example.gone", Section::bar);
    startSettings();
    const auto menu = [&](const char* id) { return view::menuOf(*window().content(), id); };
    EXPECT_EQ(menu("more:com.example.app").at(0).title, "Show Me");
    choose("com.example.app", 0);
    EXPECT_TRUE(shows("com.example.app"));
    EXPECT_FALSE(shows("com.example.other"));
    EXPECT_EQ(words("shown:com.example.app"), "App is being shown");
    EXPECT_EQ(menu("more:com.example.app").at(0).title, "Stop Showing");
    choose("com.example.app", 0);
    EXPECT_FALSE(shows("com.example.app"));
    EXPECT_EQ(find("shown:com.example.app"), nullptr);
    choose("com.example.app", 1);
    EXPECT_EQ(words("kept:com.example.app"), "App is always kept here");
    EXPECT_TRUE(menu("more:com.example.app").at(1).isChecked);
    EXPECT_TRUE(saved().alwaysKeep.contains("com.example.app"));
    EXPECT_EQ(words("undo:what"), "App always stays where it is.");
    set("undo:button");
    EXPECT_TRUE(saved().alwaysKeep.empty());
    choose("com.example.app", 1);
    choose("com.example.app", 1);
    EXPECT_TRUE(saved().alwaysKeep.empty());
    EXPECT_EQ(find("kept:com.example.app"), nullptr);
    mac.workspace.onTerminate = [&](ProcessID pid) { mac.quit(pid); };
    choose("com.example.app", 3);
    EXPECT_TRUE(logged("[health] asked App to quit"));
    pass(2s);
    EXPECT_EQ(words("usage:com.example.app"), "not running");
    EXPECT_EQ(words("name:com.example.app"), "App") << "it is installed still";
    const view::Menu gone = menu("more:com.example.gone");
    EXPECT_FALSE(gone.at(0).isEnabled || gone.at(3).isEnabled);
    EXPECT_FALSE(menu("more:com.example.other").at(4).isEnabled) << "it would come back";
    choose("com.example.gone", 4);
    EXPECT_EQ(find("app:com.example.gone"), nullptr);
    EXPECT_FALSE(saved().sections.contains("com.example.gone"));
    EXPECT_EQ(gone.at(3).help, "com.example.gone isn't running.");
}

TEST_F(SettingsAppsTest, AreFoundByNameAndOrderedAsAskedFor) {
    mac.processes.setMemory(launch("com.example.10", "App 10", Section::bar), 500ULL << 20U);
    launch("com.example.2", "App 2", Section::tucked);
    launch("com.example.u", "Übersicht", Section::tucked);
    launch("com.example.v", "Vault", Section::bar);
    layout.lastClicked["com.example.u"] =
        floorToSeconds(mac.platform().mainThread.date()) - std::chrono::days(3);
    startSettings();
    EXPECT_EQ(names(), (std::vector<std::string>{"App 2", "App 10", "Übersicht", "Vault"}));
    EXPECT_EQ(words("clicked:com.example.u"), "Clicked 3 days ago");
    EXPECT_EQ(words("app:com.example.u"), "Übersicht, Tucked, Clicked 3 days ago, 40 MB");
    set("search", std::string("uber"));
    EXPECT_EQ(names(), std::vector<std::string>{"Übersicht"});
    set("search", std::string("nothing"));
    EXPECT_EQ(words("apps:empty"), "No app here is called that.");
    set("search", view::KeyPress{.key = view::KeyPress::Key::escape});
    EXPECT_EQ(names().size(), 4U);
    set("order", std::int64_t{1});
    EXPECT_EQ(names().front(), "Übersicht");
    set("order", std::int64_t{2});
    EXPECT_EQ(names().front(), "App 10");
    set("search", view::KeyPress{.key = view::KeyPress::Key::down});
    set("search", view::KeyPress{.key = view::KeyPress::Key::enter});
    EXPECT_EQ(words("shown:com.example.10"), "App 10 is being shown");
}

TEST_F(SettingsAppsTest, ArePlacedAndForgottenTogether) {
    launch("com.example.1", "One", Section::bar);
    launch("com.example.2", "Two", Section::bar);
    layout.place("com.example.gone", Section::buried);
    layout.place("com.example.lost", Section::tucked);
    startSettings();
    EXPECT_EQ(find("place-selected"), nullptr);
    set("apps", view::Selected{.rows = {"app:com.example.1", "app:com.example.2"}});
    EXPECT_EQ(words("selected:count"), "2 apps selected");
    EXPECT_EQ(standing("place-selected"), "Bar");
    set("place-selected", std::int64_t{2});
    EXPECT_FALSE(shows("com.example.1") || shows("com.example.2"));
    EXPECT_EQ(words("undo:what"), "2 apps are buried.");
    set("undo:button");
    EXPECT_TRUE(shows("com.example.1") && shows("com.example.2"));
    EXPECT_EQ(words("undo:what"), "Taken back: Bury 2 Apps.");
    set("undo:button");
    EXPECT_FALSE(shows("com.example.1"));
    const auto menu = [&](const std::string& row) { return view::menuOf(*window().content(), "apps", row); };
    EXPECT_TRUE(menu("app:com.example.1").at(2).isChecked);
    EXPECT_FALSE(menu("app:com.example.1").at(4).isEnabled) << "both run";
    EXPECT_EQ(menu("app:com.example.gone").at(8).title, "Forget com.example.gone");
    EXPECT_EQ(words("gone:what"), "2 apps aren't on this Mac any more.");
    set("forget-gone");
    EXPECT_EQ(saved().sections.size(), 2U);
    EXPECT_EQ(find("gone"), nullptr);
    EXPECT_EQ(words("undo:what"), "2 apps are forgotten.");
    settings->show();
    EXPECT_NE(find("undo"), nullptr);
    window().close();
    pass(1s);
    settings->show();
    EXPECT_EQ(find("undo"), nullptr) << "that was long ago";
    EXPECT_EQ(find("place-selected"), nullptr);
}

TEST_F(SettingsAppsTest, TellWhatTheAutopilotThinksOfThem) {
    const Date now = floorToSeconds(mac.platform().mainThread.date());
    launch("com.example.dusty", "Dusty", Section::bar);
    layout.autopilot.watchingSince = now - std::chrono::days(40);
    layout.lastClicked["com.example.dusty"] = now - std::chrono::days(20);
    startSettings();
    EXPECT_EQ(words("thinks:com.example.dusty"), "Gathering dust: not clicked in 20 days");
    set("later:com.example.dusty");
    EXPECT_EQ(words("thinks:com.example.dusty"), "No suggestions for 30 days");
    set("undo:button");
    EXPECT_EQ(words("accept:com.example.dusty"), "Tuck Dusty");
    set("later:com.example.dusty");
    set("ask-again:com.example.dusty");
    set("accept:com.example.dusty");
    EXPECT_EQ(standing("section:com.example.dusty"), "Tucked");
    EXPECT_EQ(words("undo:what"), "Dusty is tucked.");
    set("undo:button");
    EXPECT_EQ(standing("section:com.example.dusty"), "Bar");
    EXPECT_EQ(words("accept:com.example.dusty"), "Tuck Dusty") << "and it is suggested again";
}

TEST_F(SettingsAppsTest, AreNeverMissingWithoutAReason) {
    mac.revokeTrust();
    startSettings();
    EXPECT_EQ(words("apps:empty"), "Velko can't look at your menu bar until you give it permission.");
    mac.grantTrust();
    pass(3s);
    EXPECT_EQ(words("apps:empty"),
              "No app has an icon in your menu bar right now. When one moves in, it shows up here.");
    launch("com.example.new");
    pass(16s);
    EXPECT_EQ(find("apps:empty"), nullptr);
}

}  // namespace
}  // namespace velko
