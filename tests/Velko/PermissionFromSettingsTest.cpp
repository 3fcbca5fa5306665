#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "tests/Velko/ProgramOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

/// A user opens the settings before giving the permission, and asks there how to give it.
class PermissionFromSettingsTest : public ProgramOnMac {
 protected:
    void SetUp() override {
        mac.revokeTrust();
        launch(setUp());
        mac.advance(1s);
        app->reopen(false);
        ask();
        const ProcessID settings =
            mac.launch({.bundleID = "com.apple.systempreferences", .name = "System Settings"});
        mac.windows.others = {{.layer = 0,
                               .ownerPID = settings,
                               .frame = Rect{.x = 600, .y = 200, .width = 715, .height = 500}}};
        mac.advance(1s);
    }
    void ask() { EXPECT_TRUE(surface(Surfaces::Kind::settings).perform("problem:trust:open")); }
    [[nodiscard]] bool isGuided() { return surface(Surfaces::Kind::permissionGuide).isOpen(); }
};

TEST_F(PermissionFromSettingsTest, IsGuidedToTheListUntilItIsGiven) {
    EXPECT_EQ(mac.workspace.openedURLs().back(),
              "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
    EXPECT_TRUE(isGuided());
    const int raised = surface(Surfaces::Kind::settings).raised();
    mac.grantTrust();
    mac.advance(5s);
    EXPECT_FALSE(isGuided());
    EXPECT_EQ(surface(Surfaces::Kind::settings).raised(), raised + 1) << "back to where it was asked for";
}

TEST_F(PermissionFromSettingsTest, IsGuidedByOneGuideThatGoesWithItsWindow) {
    ask();
    mac.advance(1s);
    EXPECT_TRUE(isGuided());
    EXPECT_TRUE(surface(Surfaces::Kind::settings).perform("sort-again"));
    mac.advance(1s);
    EXPECT_FALSE(isGuided()) << "the setup has one of its own";
    ask();
    mac.advance(1s);
    EXPECT_TRUE(isGuided());
    surface(Surfaces::Kind::setup).dismiss(Surface::Dismissal::closeButton);
    mac.advance(1s);
    EXPECT_FALSE(isGuided());
    ask();
    mac.advance(1s);
    EXPECT_TRUE(isGuided());
    surface(Surfaces::Kind::settings).dismiss(Surface::Dismissal::closeButton);
    mac.advance(5s);
    EXPECT_FALSE(isGuided());
}

}  // namespace
}  // namespace velko
