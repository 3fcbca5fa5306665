#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "tests/Velko/SettingsOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class SettingsProblemsTest : public SettingsOnMac {
 protected:
    void SetUp() override {
        launch("com.example.out", "Out", Section::bar);
        launch("com.example.in", "In", Section::tucked);
    }
};

TEST_F(SettingsProblemsTest, PutProblemsOnTopWithTheirRemedies) {
    bundlePath = "/Users/someone/Downloads/Velko.app";
    const std::string broken = "broken";
    write(broken);
    mac.revokeTrust();
    startWithFileAsItIs();
    openSettings();
    const auto lines = reading(*window().content());
    EXPECT_EQ(lines.at(1), "Your layout file can't be read. Nothing is hidden.") << "right below the tabs";
    EXPECT_EQ(words("problem:layout:more"), *values().problems.layoutUnreadable);
    EXPECT_EQ(words("problem:trust:what"), "Velko needs permission to tidy your menu bar.");
    EXPECT_EQ(words("problem:place:what"), "Move Velko to Applications so its icon stays visible.");
    set("problem:layout:edit");
    EXPECT_EQ(mac.application.openedFiles.back().file, file());
    ASSERT_TRUE(LayoutStore(file()).save(layout));
    set("problem:layout:again");
    EXPECT_EQ(find("problem:layout"), nullptr);
    set("problem:trust:open");
    EXPECT_EQ(host.permissions, 1);
    mac.grantTrust();
    pass(3s);
    EXPECT_EQ(find("problem:trust"), nullptr);
    EXPECT_FALSE(shows("com.example.in"));
}

TEST_F(SettingsProblemsTest, ReplaceNoFileThatCannotBeReadByAccident) {
    write("broken");
    startWithFileAsItIs();
    openSettings();
    EXPECT_NE(words("apps:locked"), "");
    for (const char* const gone : {"section:com.example.in", "new-icons", "ask", "sort-again", "filter"}) {
        EXPECT_EQ(find(gone), nullptr) << gone;
    }
    EXPECT_FALSE(window().perform("export"));
    EXPECT_NE(find("export")->help, "");
    openPage(1);
    EXPECT_NE(words("general:locked"), "");
    for (const char* const toggle : {"hover", "pop-out", "live-activities", "autopilot"}) {
        EXPECT_FALSE(window().perform(toggle, standing(toggle) == "off")) << toggle;
    }
    for (const char* const picker : {"style-notched", "style-other", "auto-tuck"}) {
        EXPECT_FALSE(window().perform(picker, std::int64_t{1})) << picker;
    }
    set("launch-at-login", true);
    EXPECT_EQ(standing("launch-at-login"), "on") << "the system keeps it";
    EXPECT_EQ(contentOf(file()), "broken");

    velko->place("com.example.in", Section::tucked);  // the user does this in another place, on purpose
    pass(1s);
    EXPECT_TRUE(values().health().isOk());
    EXPECT_FALSE(shows("com.example.in"));
    EXPECT_EQ(find("problem:layout"), nullptr);
    set("hover", true);
}

TEST_F(SettingsProblemsTest, StartAfreshWhenTheUserSaysSo) {
    write("broken");
    startWithFileAsItIs();
    openSettings();
    set("problem:layout:afresh");
    ASSERT_NE(mac.dialogs.question(), nullptr);
    EXPECT_EQ(mac.dialogs.question()->title, "Start with a fresh layout?");
    mac.dialogs.answer(false);
    pass(1s);
    EXPECT_EQ(contentOf(file()), "broken");
    set("problem:layout:afresh");
    mac.dialogs.answer(true);
    pass(1s);
    EXPECT_EQ(saved(), values().layout);
    EXPECT_EQ(contentOf(file().parent_path() / "layout.unreadable-2026-03-02T080006Z.json"), "broken");
    EXPECT_EQ(find("problem:layout"), nullptr);
    EXPECT_EQ(host.resorts, 1) << "the sort follows";
    EXPECT_TRUE(values().health().isOk());
}

TEST_F(SettingsProblemsTest, SayUntilASaveSucceedsThatTheLastOneFailed) {
    startSettings();
    const auto away = folder.path() / "away";
    std::filesystem::rename(file().parent_path(), away);
    writeFile(file().parent_path(), "a file in the folder's place");
    set("section:com.example.out", std::int64_t{1});
    EXPECT_EQ(words("problem:save:what"), "Your latest changes couldn't be saved.");
    EXPECT_EQ(words("problem:save:more"), *values().saveFailure);
    EXPECT_TRUE(logged("[layout] save failed: " + *values().saveFailure));
    set("problem:save:again");
    EXPECT_NE(find("problem:save"), nullptr);
    std::filesystem::remove(file().parent_path());
    std::filesystem::rename(away, file().parent_path());
    set("problem:save:again");
    EXPECT_EQ(find("problem:save"), nullptr);
    EXPECT_EQ(saved(), values().layout);
}

TEST_F(SettingsProblemsTest, TellOfARefusalWhileNothingWorseKeepsIconsOut) {
    startSettings();
    mac.framework.refusal = FrameworkError{"Test", 7, "Not today"};
    velko->tryAgain();
    mac.session.changeSpace();
    pass(2s);
    EXPECT_NE(find("problem:refusal"), nullptr);
    mac.revokeTrust();
    pass(5s);
    EXPECT_NE(find("problem:trust"), nullptr);
    EXPECT_EQ(find("problem:refusal"), nullptr);
}

TEST_F(SettingsProblemsTest, SayThatThisSystemIsNotSupported) {
    mac.framework.installed = false;
    mac.updater.reason.reset();
    layout.sections.clear();
    startSettings();
    EXPECT_EQ(words("problem:engine:what"), "Not supported on this macOS build. Nothing is hidden.");
    EXPECT_EQ(words("apps:empty"), "Velko can't look at your menu bar: this macOS build isn't supported.");
    set("problem:engine:updates");
    EXPECT_EQ(mac.updater.checks, 1);
}

}  // namespace
}  // namespace velko
