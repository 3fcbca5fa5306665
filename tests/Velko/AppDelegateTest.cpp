#include "Simulator/Desktop/SimulatedCommandDoor.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "tests/Velko/ProgramOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Policy = Application::Policy;

class AppDelegateTest : public ProgramOnMac {};

TEST_F(AppDelegateTest, SwitchesLaunchAtLoginOnExactlyOnce) {
    launch(setUp());
    EXPECT_EQ(mac.loginItem.status(), LoginItem::Status::enabled);
    quit();

    EXPECT_TRUE(mac.loginItem.setEnabled(false));  // in the system's settings
    launchAgain();
    quit();
    launchAgain();
    EXPECT_EQ(mac.loginItem.status(), LoginItem::Status::notRegistered);
}

TEST_F(AppDelegateTest, DoesNotTryAgainWhenTheSystemRefusedTheLoginDefault) {
    mac.loginItem.refusal = "not today";
    launch(setUp());
    EXPECT_NE(placeInLog("launch at login failed: not today"), std::string::npos);
    quit();
    mac.loginItem.refusal.reset();
    launchAgain();
    EXPECT_EQ(mac.loginItem.status(), LoginItem::Status::notRegistered);
}

TEST_F(AppDelegateTest, StartsInOrder) {
    launch();
    EXPECT_EQ(mac.statusItem.autosaveName(), "VelkoChevron");
    const std::size_t started = placeInLog("Velko 1.2 starting");
    const std::size_t login = placeInLog("launch at login true");
    ASSERT_NE(started, std::string::npos);
    ASSERT_NE(login, std::string::npos);
    EXPECT_LT(started, login);

    EXPECT_FALSE(surface(Surfaces::Kind::setup).isOpen()) << "it comes a second after the launch";
    mac.advance(499ms);
    EXPECT_FALSE(surface(Surfaces::Kind::setup).isOpen());
    mac.advance(1ms);
    EXPECT_TRUE(surface(Surfaces::Kind::setup).isOpen());
}

TEST_F(AppDelegateTest, OpensNoSetupThatIsCompleteByThen) {
    launch();
    app->controller().completeSetup({});
    mac.advance(3s);
    EXPECT_FALSE(surface(Surfaces::Kind::setup).isOpen());
}

TEST_F(AppDelegateTest, SortsByWhatAnotherOrganiserLeft) {
    home = std::filesystem::path(VELKO_FIXTURES) / "homes" / "bartender-python-xml";
    mac.launch({.bundleID = "com.example.clock", .name = "Clock", .icons = {{.title = "9:41"}}});
    launch();
    mac.advance(3s);
    SimulatedSurface& setup = surface(Surfaces::Kind::setup);
    const view::Shortcut enter{.key = view::Shortcut::Key::enter};
    for (int step = 0; step < 8 && setup.isOpen(); ++step) {
        EXPECT_TRUE(setup.press(enter));
        mac.advance(1s);
    }
    EXPECT_NE(placeInLog("[setup] found Bartender: "), std::string::npos);
    EXPECT_EQ(app->controller().values().layout.section("com.example.clock"), Section::buried);
    EXPECT_TRUE(app->controller().values().layout.hasCompletedSetup);
}

TEST_F(AppDelegateTest, IsInTheDockWhileAWindowIsOpen) {
    launch();
    EXPECT_EQ(mac.application.policy(), Policy::accessory);
    mac.advance(1s);
    EXPECT_EQ(mac.application.policy(), Policy::regular);
    EXPECT_TRUE(mac.application.hasDockIcon);
    EXPECT_EQ(mac.application.activations, 1);

    app->reopen(false);
    EXPECT_TRUE(surface(Surfaces::Kind::settings).isOpen());
    surface(Surfaces::Kind::setup).dismiss(Surface::Dismissal::closeButton);
    mac.advance(100ms);
    EXPECT_EQ(mac.application.policy(), Policy::regular) << "the settings are still open";
    surface(Surfaces::Kind::settings).dismiss(Surface::Dismissal::closeButton);
    mac.advance(100ms);
    EXPECT_EQ(mac.application.policy(), Policy::accessory);

    app->reopen(true);
    EXPECT_FALSE(surface(Surfaces::Kind::settings).isOpen());
}

TEST_F(AppDelegateTest, ShowsEveryIconWhenItIsQuitFromTheMenu) {
    Layout layout = setUp();
    layout.place("com.example.quiet", Section::tucked);
    mac.launch({.bundleID = "com.example.quiet", .name = "Quiet", .icons = {{.title = "q"}}});
    const std::size_t before = mac.visibleIcons().size();
    launch(layout);
    mac.advance(3s);
    EXPECT_EQ(mac.visibleIcons().size(), before - 1);

    mac.application.onTerminate = [this] { app->willTerminate(); };
    mac.statusItem.click({.isRight = true});
    mac.advance(100ms);
    EXPECT_TRUE(mac.statusItem.chooseFromMenu("Quit Velko"));
    mac.advance(1s);
    EXPECT_EQ(mac.visibleIcons().size(), before);
}

TEST_F(AppDelegateTest, AsksBeforeItImportsAFileThatWasOpened) {
    Layout other = setUp();
    other.place("com.example.travelled", Section::buried);
    const auto travelled = folder.path() / "My Layout.velko";
    writeFile(travelled, LayoutExport::of(other).data());
    launch(setUp());

    app->openFile(travelled);
    ASSERT_NE(mac.dialogs.question(), nullptr);
    EXPECT_EQ(mac.dialogs.question()->title, "Use the layout “My Layout”?");
    mac.dialogs.answer(false);
    mac.advance(100ms);
    EXPECT_TRUE(app->controller().values().layout.sections.empty());

    app->openFile(travelled);
    mac.dialogs.answer(true);
    mac.advance(100ms);
    EXPECT_EQ(app->controller().values().layout.section("com.example.travelled"), Section::buried);
}

TEST_F(AppDelegateTest, AsksAboutOneFileAfterTheOther) {
    launch(setUp());
    const auto answer = [&](const char* title) {
        ASSERT_NE(mac.dialogs.question(), nullptr) << title;
        EXPECT_EQ(mac.dialogs.question()->title, title);
        mac.dialogs.answer(true);
        mac.advance(100ms);
    };
    for (const char* name : {"First.velko", "Second.velko"}) {
        writeFile(folder.path() / name, LayoutExport::of(Layout()).data());
    }
    app->controller().transfer().exportLayout();
    app->openFile(folder.path() / "First.velko");
    EXPECT_EQ(mac.dialogs.question(), nullptr) << "a panel is open";
    mac.dialogs.choose(std::nullopt);
    mac.advance(100ms);
    app->openFile(folder.path() / "Missing.velko");
    app->openFile(folder.path() / "Second.velko");
    app->openFile(folder.path() / "First.velko");
    answer("Use the layout “First”?");
    answer("Use the layout “Second”?");
    EXPECT_EQ(mac.dialogs.question(), nullptr) << "asked about once is enough";
    EXPECT_EQ(mac.dialogs.alerts().size(), 1U) << "one is not there";
}

TEST_F(AppDelegateTest, TakesCommandsFromWhenItMayRunUntilItQuits) {
    launch(setUp());
    EXPECT_TRUE(mac.commands.isOpen());
    quit();
    EXPECT_FALSE(mac.commands.isOpen());
    FolderLock ending(folder.path());  // another Velko, which has not quite ended
    ASSERT_TRUE(ending.take());
    launchAgain();
    app->openAddress("velko:ask/off");
    EXPECT_FALSE(mac.commands.isOpen());
    EXPECT_EQ(mac.dialogs.question(), nullptr);
    ending.release();
    mac.advance(500ms);
    EXPECT_TRUE(mac.commands.isOpen());
    EXPECT_NE(mac.dialogs.question(), nullptr) << "what was opened meanwhile is not lost";
    quit();
    mac.commands.refusal = "no room";
    launchAgain();
    EXPECT_NE(placeInLog("nobody can give commands: no room"), std::string::npos);
}

}  // namespace
}  // namespace velko
