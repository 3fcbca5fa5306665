#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class TransferTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        launch("com.example.first", Section::bar);
        second = launch("com.example.second", Section::tucked);
    }

    void import(const std::filesystem::path& from) {
        velko->transfer().importLayout();
        EXPECT_EQ(mac.dialogs.panelText(), "Choose a layout exported from Velko on another Mac.");
        mac.dialogs.choose(from);
        pass(1s);
        if (const auto* asked = mac.dialogs.question()) {
            question = *asked;
        }
        mac.dialogs.answer(true);
        pass(1s);
    }

    ProcessID second = 0;
    Dialogs::Question question;
    std::filesystem::path exported = folder.path() / "My Velko Layout.velko";
};

TEST_F(TransferTest, TakesPlacementsToAnotherMac) {
    start();
    velko->transfer().exportLayout();
    EXPECT_EQ(mac.dialogs.panelText(), "My Velko Layout.velko");
    mac.dialogs.choose(exported);
    pass(1s);
    EXPECT_TRUE(logged("[layout] exported 2 placements to " + exported.string()));
    velko->place("com.example.first", Section::buried);
    velko->place("com.example.third", Section::buried);
    pass(1s);
    import(exported);
    EXPECT_TRUE(logged("[layout] imported 2 placements from " + exported.string()));
    EXPECT_TRUE(logged("[engine] applied (import) in "));
    EXPECT_TRUE(shows("com.example.first"));
    EXPECT_EQ(saved().section("com.example.third"), Section::buried) << "what the file does not name stays";
    EXPECT_EQ(question.title, "Use the layout “My Velko Layout”?");
    EXPECT_EQ(question.message,
              "Another place for 1 app, the same place for 1 app. Its settings take the place of yours. Apps "
              "that it doesn't name stay where they are.");
    EXPECT_TRUE(velko->undo());
    pass(1s);
    EXPECT_EQ(saved().section("com.example.first"), Section::buried);
    EXPECT_FALSE(shows("com.example.first"));
    EXPECT_TRUE(logged("[layout] undone: Import"));
    EXPECT_TRUE(velko->redo());
    pass(1s);
    EXPECT_TRUE(shows("com.example.first"));
}

TEST_F(TransferTest, AsksBeforeAnImportAndCountsAppsThatAreNotHere) {
    start();
    Layout other;
    other.place("com.example.first", Section::buried);
    other.place("com.example.elsewhere", Section::buried);
    other.place("com.example.far", Section::bar);
    writeFile(exported, LayoutExport::of(other).data());
    velko->transfer().importLayout();
    mac.dialogs.choose(exported);
    pass(1s);
    ASSERT_NE(mac.dialogs.question(), nullptr);
    EXPECT_TRUE(
        mac.dialogs.question()->message.starts_with("Another place for 1 app. 2 apps aren't on this Mac."));
    velko->transfer().importLayout();
    EXPECT_FALSE(mac.dialogs.isPanelOpen()) << "one at a time";
    mac.dialogs.answer(false);
    pass(1s);
    EXPECT_EQ(values().layout.section("com.example.first"), Section::bar);
    EXPECT_EQ(values().history.undoable(), nullptr);
}

TEST_F(TransferTest, TakesBackPlacingForgettingAndAcceptedSuggestions) {
    layout.place("com.example.gone", Section::buried);
    layout.alwaysKeep = {"com.example.gone"};
    layout.lastClicked["com.example.gone"] = Date(std::chrono::days(20'000));
    start();
    velko->forget({"com.example.gone", "com.example.first"});
    EXPECT_TRUE(logged("[layout] forgot com.example.gone")) << "an app that is there stays known";
    EXPECT_FALSE(saved().sections.contains("com.example.gone") ||
                 saved().alwaysKeep.contains("com.example.gone") ||
                 saved().lastClicked.contains("com.example.gone"));
    EXPECT_TRUE(saved().sections.contains("com.example.first"));
    velko->place(BundleIDs{"com.example.first", "com.example.second"}, Section::buried);
    EXPECT_EQ(values().history.undoable()->title, "Bury 2 Apps");
    pass(1s);
    EXPECT_FALSE(shows("com.example.first"));
    velko->autopilot().accept({.bundleID = "com.example.first",
                               .change = TidySuggestion::MoveTo{Section::tucked},
                               .reason = TidySuggestion::Unused{.days = 20}});
    EXPECT_FALSE(values().layout.autopilot.snoozedUntil.empty());
    EXPECT_TRUE(velko->undo());
    EXPECT_TRUE(values().layout.autopilot.snoozedUntil.empty());
    EXPECT_EQ(values().layout.section("com.example.first"), Section::buried);
    EXPECT_TRUE(velko->undo());
    pass(1s);
    EXPECT_TRUE(shows("com.example.first"));
    EXPECT_TRUE(velko->undo());
    EXPECT_EQ(saved().section("com.example.gone"), Section::buried);
    EXPECT_TRUE(saved().alwaysKeep.contains("com.example.gone"));
    EXPECT_FALSE(velko->undo());
    velko->loadLayout();
    EXPECT_FALSE(velko->redo()) << "it was about another layout";
}

TEST_F(TransferTest, BringsSwitchesThatTakeEffectAtOnce) {
    layout.popOutOnChange = false;
    start();
    velko->transfer().exportLayout();
    mac.dialogs.choose(exported);
    pass(1s);
    velko->preferences().setSwitch(Switch::popOutOnChange, true);
    velko->preferences().setReveal({.autoTuckSeconds = 0});
    pass(3s);
    mac.changeIcon(second, 0, [](SimulatedIcon& icon) { icon.title = "1 new message"; });
    pass(3s);
    velko->toggle();
    EXPECT_FALSE(values().poppedOut.empty());
    import(exported);
    EXPECT_TRUE(values().poppedOut.empty());
    pass(10s);
    EXPECT_EQ(values().state, RevealState::collapsed()) << "the imported auto-tuck counts from now";
}

TEST_F(TransferTest, ChangesNothingWhenTheUserThinksBetterOfIt) {
    start();
    const auto lines = log.lines().size();
    velko->transfer().exportLayout();
    velko->transfer().importLayout();
    EXPECT_EQ(mac.dialogs.panelText(), "My Velko Layout.velko") << "one panel at a time";
    mac.dialogs.choose(std::nullopt);
    pass(1s);
    EXPECT_EQ(log.lines().size(), lines);
    EXPECT_TRUE(mac.dialogs.alerts().empty());
}

TEST_F(TransferTest, TellsTheUserWhatWentWrong) {
    start();
    const Layout before = values().layout;
    writeFile(exported, R"({"velkoLayout": 2})");
    import(exported);
    import(file());
    import(folder.path() / "missing.velko");
    velko->transfer().exportLayout();
    mac.dialogs.choose(file() / "in a file.velko");
    pass(1s);
    const auto& alerts = mac.dialogs.alerts();
    ASSERT_EQ(alerts.size(), 4U);
    const std::string refused = "Velko couldn't import that layout.";
    const std::string newer = "This layout comes from a newer Velko. Update Velko, then try again.";
    EXPECT_EQ(alerts[0], (Dialogs::Alert{refused, newer}));
    EXPECT_EQ(alerts[1], (Dialogs::Alert{refused, "This file isn't a Velko layout."}));
    EXPECT_EQ(alerts[2].title, refused);
    EXPECT_EQ(alerts[3].title, "Velko couldn't save the layout.");
    EXPECT_EQ(values().layout, before);
}

TEST_F(TransferTest, HealsALayoutThatCouldNotBeRead) {
    writeFile(exported, LayoutExport::of(layout).data());
    write("broken");
    startWithFileAsItIs();
    import(exported);
    EXPECT_TRUE(values().health().isOk());
    EXPECT_FALSE(shows("com.example.second"));
}

}  // namespace
}  // namespace velko
