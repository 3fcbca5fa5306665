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
    EXPECT_EQ(words("usage:com.example.gone"), "not running");
    EXPECT_TRUE(std::get<view::Text>(find("name:com.example.gone")->content).isSecondary);
    set("section:com.example.gone", std::int64_t{0});
    EXPECT_EQ(saved().section("com.example.gone"), Section::bar) << "it can be sorted all the same";
    mac.removeIcon(hidden, 0);
    mac.changeSpace();
    pass(3s);
    EXPECT_EQ(words("usage:com.example.3"), "running, without an icon right now");
    launch("com.example.new");
    pass(20s);
    EXPECT_EQ(words("usage:com.example.new"), "New here. Where does it go?");
    EXPECT_EQ(standing("section:com.example.new"), "Tucked");
    set("section:com.example.new", std::int64_t{0});
    EXPECT_TRUE(logged("[layout] com.example.new -> bar (new icon answered)"));
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
    EXPECT_EQ(menu("more:com.example.app").at(0).title, "Stop Showing");
    choose("com.example.app", 0);
    EXPECT_FALSE(shows("com.example.app"));
    choose("com.example.app", 1);
    EXPECT_TRUE(menu("more:com.example.app").at(1).isChecked);
    EXPECT_TRUE(saved().alwaysKeep.contains("com.example.app"));
    choose("com.example.app", 1);
    EXPECT_TRUE(saved().alwaysKeep.empty());
    mac.workspace.onTerminate = [&](ProcessID pid) { mac.quit(pid); };
    choose("com.example.app", 3);
    EXPECT_TRUE(logged("[health] asked App to quit"));
    pass(2s);
    EXPECT_EQ(words("usage:com.example.app"), "not running");
    EXPECT_EQ(words("name:com.example.app"), "App") << "it is installed still";
    const view::Menu gone = menu("more:com.example.gone");
    EXPECT_FALSE(gone.at(0).isEnabled || gone.at(3).isEnabled);
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
