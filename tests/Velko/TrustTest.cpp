#include "Simulator/Machine/SimulatedSession.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using TrustTest = VelkoOnMac;

class WithoutTrustTest : public VelkoOnMac {
 protected:
    WithoutTrustTest() : VelkoOnMac({.trusted = false}) {}
};

TEST_F(WithoutTrustTest, ReadsNothingUntilThePermissionComesAndThenTidies) {
    launch("com.example.tucked", Section::tucked);
    start();
    launch("com.example.late");
    pass(30s);
    EXPECT_FALSE(values().inventoryLoaded);
    EXPECT_EQ(values().health().kind, Health::Kind::needsAccessibility);
    EXPECT_TRUE(shows("com.example.tucked"));
    EXPECT_TRUE(logged("[app] Accessibility not granted yet. Hiding nothing until it is."));
    EXPECT_EQ(values().layout.autopilot.watchingSince, std::nullopt);
    mac.grantTrust();
    pass(3s);
    EXPECT_TRUE(values().health().isOk());
    EXPECT_EQ(timesLogged("[app] Accessibility granted"), 1);
    EXPECT_EQ(timesLogged("[autopilot] click history started: suggestions begin in 14 days"), 1);
    EXPECT_TRUE(saved().autopilot.watchingSince.has_value());
    EXPECT_FALSE(shows("com.example.tucked"));
    expectSettled();
}

TEST_F(TrustTest, ShowsEverythingWhenThePermissionIsTakenAndTidiesWhenItIsBack) {
    launch("com.example.tucked", Section::tucked);
    start();
    launch("com.example.late");
    pass(1s);
    mac.revokeTrust();
    pass(3s);
    EXPECT_EQ(values().health().kind, Health::Kind::needsAccessibility);
    EXPECT_TRUE(shows("com.example.tucked"));
    EXPECT_EQ(timesLogged("[app] Accessibility taken away. Hiding nothing until it is granted again."), 1);
    const auto messages = mac.cost().accessibilityMessages;
    mac.session.changeSpace();
    pass(2min);
    EXPECT_EQ(mac.cost().accessibilityMessages, messages)
        << "nothing is read meanwhile, after the launch neither";
    mac.grantTrust();
    pass(3s);
    EXPECT_FALSE(shows("com.example.tucked"));
    EXPECT_EQ(timesLogged("[autopilot] click history started"), 1) << "only the first time";
    expectSettled();
}

TEST_F(TrustTest, TakesNoScanAtItsWordThatWasMadeWithoutThePermission) {
    launch("com.example.tucked", Section::tucked);
    start();
    const auto items = values().items;
    mac.revokeTrust();
    velko->requestScan(ScanDepth::full);
    pass(100ms);
    EXPECT_EQ(values().items, items);
    EXPECT_EQ(values().health().kind, Health::Kind::needsAccessibility) << "noticed before the next look";
}

}  // namespace
}  // namespace velko
