#include <cerrno>
#include <optional>

#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "VelkoCore/Files/FolderLock.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "tests/Velko/ProgramOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

/// Velko with a layout that another program uses.
class SingleInstanceTest : public ProgramOnMac {
 protected:
    SingleInstanceTest() { EXPECT_TRUE(other->take()); }

    void launchElsewhere() {
        mac.launch({.bundleID = "app.velko.mac", .name = "Velko", .bundlePath = elsewhere});
    }
    [[nodiscard]] bool hasStarted() const { return !mac.statusItem.autosaveName().empty(); }

    const std::string elsewhere = "/Users/anna/build/Velko.app";
    const std::filesystem::path travelled = folder.path() / "My Layout.velko";
    std::optional<FolderLock> other{folder.path()};
};

TEST_F(SingleInstanceTest, MakesWayForTheVelkoThatWasFirst) {
    launchElsewhere();
    launch(setUp());
    app->reopen(false);
    mac.advance(600ms);
    const std::vector<SimulatedApplication::OpenedFile> opened{{.file = elsewhere, .application = {}}};
    EXPECT_EQ(mac.application.openedFiles, opened);
    EXPECT_FALSE(mac.application.isTerminating) << "the request is still on its way";
    mac.advance(500ms);
    EXPECT_TRUE(mac.application.isTerminating);
    app->willTerminate();
    EXPECT_FALSE(hasStarted() || surface(Surfaces::Kind::settings).isOpen());
    EXPECT_NE(log.text().find("[app] another Velko has the layout: " + elsewhere), std::string::npos);
    EXPECT_EQ(log.lines().size(), 1U) << "nothing else was begun, nor ended";
    EXPECT_EQ(LayoutStore(file()).load(), setUp());
}

TEST_F(SingleInstanceTest, HandsOverTheFilesThatItWasOpenedWith) {
    launchElsewhere();
    launch(setUp());
    app->openFile(travelled);
    mac.advance(1s);
    const std::vector<SimulatedApplication::OpenedFile> opened{{.file = travelled, .application = elsewhere}};
    EXPECT_EQ(mac.application.openedFiles, opened);
}

TEST_F(SingleInstanceTest, TakesOverFromOneThatIsEnding) {
    launch(setUp());
    writeFile(travelled, LayoutExport::of(Layout()).data());
    app->openFile(travelled);
    EXPECT_FALSE(hasStarted());
    other.reset();
    mac.advance(100ms);
    EXPECT_TRUE(hasStarted());
    EXPECT_NE(mac.dialogs.question(), nullptr) << "whether to import the file";
    EXPECT_FALSE(FolderLock(folder.path()).take());
    app->willTerminate();
    EXPECT_TRUE(FolderLock(folder.path()).take());
}

TEST_F(SingleInstanceTest, AsksWhenTheOtherIsNotOnThisMac) {
    other->tell("process 7");
    launch(setUp());
    for (int tries = 0; tries < 2; ++tries) {
        mac.advance(1s);
        ASSERT_NE(mac.dialogs.question(), nullptr);
        EXPECT_TRUE(mac.dialogs.question()->message.starts_with("Another program works on it (process 7)"));
        mac.dialogs.answer(true);
    }
    mac.advance(2s);
    mac.dialogs.answer(false);
    mac.advance(100ms);
    EXPECT_TRUE(mac.application.isTerminating && !hasStarted());
}

TEST_F(SingleInstanceTest, GoesOnWhereFoldersCannotBeLocked) {
    files.flock = [](int, int) {
        errno = ENOTSUP;
        return -1;
    };
    launch(setUp());
    EXPECT_TRUE(hasStarted());
    EXPECT_LT(placeInLog("[layout] another Velko would not be noticed, the folder can't be locked: "),
              placeInLog("[app] Velko 1.2 starting"));
}

}  // namespace
}  // namespace velko
