#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "tests/Velko/SetupOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

constexpr auto beat = Timing::permissionGuideFollowInterval;

class PermissionGuideTest : public SetupOnMac {
 protected:
    PermissionGuideTest() : SetupOnMac(false) {}

    /// The setup is at the step of the permission, and the user has asked for the system's settings.
    void SetUp() override {
        startSetup();
        ASSERT_TRUE(press(Key::enter) && press(Key::enter));
    }

    void showSystemSettings(const Rect& frame) {
        if (settings == 0) {
            settings = mac.launch({.bundleID = "com.apple.systempreferences", .name = "System Settings"});
        }
        const Rect sheet{.x = frame.x, .y = frame.y, .width = 10, .height = 10};
        mac.windows.others = {{.layer = 0, .ownerPID = 1, .frame = Rect{.width = 5000, .height = 5000}},
                              {.layer = 0, .ownerPID = settings, .frame = sheet},
                              {.layer = 0, .ownerPID = settings, .frame = frame},
                              {.layer = 0, .ownerPID = settings}};
    }

    [[nodiscard]] std::string guideText() {
        if (!guide().isOpen()) {
            return "";
        }
        audit(*guide().content());
        return view::spoken(*view::find(*guide().content(), "guide:text"));
    }

    ProcessID settings = 0;
};

TEST_F(PermissionGuideTest, FollowsTheSettingsWindowAndPointsAtItsList) {
    pass(2s);
    EXPECT_FALSE(guide().isOpen()) << "there is nothing to point at yet";
    showSystemSettings({.x = 600, .y = 200, .width = 715, .height = 500});
    pass(beat);
    ASSERT_EQ(guideText(), "Switch Velko on in this list.");
    EXPECT_EQ(mac.surfaces.announcements().back(), guideText());
    const Rect below{.x = 815, .y = 1080 - 700, .width = 500, .height = 0};
    EXPECT_EQ(guide().opening()->place->anchor, below) << "beside the sidebar, below the window";
    showSystemSettings({.x = 700, .y = 560, .width = 715, .height = 500});
    pass(beat);
    const Rect visible = mac.displays.displays().front().visibleFrame;
    EXPECT_EQ(guide().opening()->place->anchor.x, 915);
    EXPECT_EQ(guide().frame()->y, visible.y) << "on the screen, though the window reaches its end";
    const auto revision = guide().revision();
    pass(5s);
    EXPECT_EQ(guide().revision(), revision) << "nothing moves while the window stays";
    mac.windows.others.clear();
    pass(beat);
    EXPECT_FALSE(guide().isOpen());
}

TEST_F(PermissionGuideTest, ThanksAndGoes) {
    showSystemSettings({.x = 600, .y = 200, .width = 715, .height = 500});
    pass(beat);
    mac.grantTrust();
    pass(1s);
    EXPECT_EQ(guideText(), "Done. Thank you!");
    EXPECT_EQ(step(), "setup:permission");
    pass(Timing::permissionGuideDoneHold);
    EXPECT_FALSE(guide().isOpen());
    EXPECT_NE(step(), "setup:permission") << "the setup goes on by itself";
    EXPECT_EQ(window().raised(), 1);
}

TEST_F(PermissionGuideTest, GoesWithTheSetup) {
    showSystemSettings({.x = 600, .y = 200, .width = 715, .height = 500});
    pass(beat);
    ASSERT_TRUE(guide().isOpen() && press(Key::leftArrow));
    EXPECT_FALSE(guide().isOpen()) << "the user went back";
    ASSERT_TRUE(press(Key::enter) && press(Key::enter));
    pass(beat);
    ASSERT_TRUE(guide().isOpen());
    window().dismiss(Surface::Dismissal::closeButton);
    pass(5s);
    EXPECT_FALSE(guide().isOpen());
    mac.grantTrust();
    pass(5s);
    EXPECT_FALSE(guide().isOpen() || setup->isShown());
}

TEST_F(PermissionGuideTest, GoesWithVelko) {
    showSystemSettings({.x = 600, .y = 200, .width = 715, .height = 500});
    pass(beat);
    setup.reset();
    EXPECT_FALSE(guide().isOpen() || window().isOpen());
    pass(5s);
    EXPECT_EQ(host.visibilityChanges, 1) << "nobody is left to be told that the window has closed";
}

}  // namespace
}  // namespace velko
