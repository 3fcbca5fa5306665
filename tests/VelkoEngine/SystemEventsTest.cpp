#include <chrono>
#include <gtest/gtest.h>
#include <utility>

#include "Simulator/SimulatedMac.h"
#include "VelkoEngine/OpenMenus.h"
#include "VelkoEngine/SystemEvents.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;

class SystemEventsTest : public testing::Test {
 protected:
    /// What is delivered in that time.
    Strings deliveries(MainThread::Uptime duration) {
        mac.advance(duration);
        return std::exchange(delivered, {});
    }

    SimulatedMac mac;
    Strings delivered;
    std::optional<SystemEvents> events{
        std::in_place, mac.platform(), [this](const SystemEvents::Kind& kind) {
            const bool isApps = kind.scope == SystemEvents::Kind::Scope::apps;
            delivered.push_back((isApps ? "apps: " : "environment: ") + kind.reason);
        }};
};

TEST_F(SystemEventsTest, DeliverABurstOnceHalfASecondAfterItsLastNote) {
    mac.launch({.bundleID = "a", .name = "A"});
    EXPECT_EQ(deliveries(400ms), Strings{});
    mac.launch({.name = "Without identifier"});
    EXPECT_EQ(deliveries(400ms), Strings{});
    const auto last = mac.launch({.bundleID = "c", .name = "C"});
    EXPECT_EQ(deliveries(499ms), Strings{});
    EXPECT_EQ(deliveries(1ms), Strings{"apps: launched a, launched ?, launched c"});
    mac.setDisplays({SimulatedDisplays::notched()});
    mac.changeSpace();
    mac.returnToSession();
    mac.quit(last);
    EXPECT_EQ(deliveries(10s),
              Strings{"environment: displays changed, Space changed, session active, quit c"});
    mac.launch({.bundleID = "d", .name = "D"});
    EXPECT_EQ(deliveries(10s), Strings{"apps: launched d"});
}

TEST_F(SystemEventsTest, LookAgainTwoSecondsAfterWakingUnlessTheyAreGone) {
    mac.sleepAndWake(8h);
    EXPECT_EQ(deliveries(1999ms), Strings{"environment: wake, screens woke"});
    EXPECT_EQ(deliveries(500ms), Strings{});
    EXPECT_EQ(deliveries(1ms), Strings{"environment: wake settled"});
    mac.sleepAndWake(8h);
    EXPECT_EQ(deliveries(100ms), Strings{});
    mac.changeSpace();
    events.reset();
    EXPECT_EQ(deliveries(10s), Strings{});
}

TEST(OpenMenus, CountOnlyAtTheMenuLevelAndFromOtherProcesses) {
    SimulatedMac mac;
    const auto level = mac.windows.popUpMenuLevel();
    const auto own = mac.processes.ownPID();
    const std::pair<std::vector<WindowInfo>, bool> cases[] = {{{}, false},
                                                              {{{level - 1, 7}, {std::nullopt, 7}}, false},
                                                              {{{level, own}}, false},
                                                              {{{level, own}, {level, 7}}, true},
                                                              {{{level, std::nullopt}}, true}};
    for (const auto& [windows, isOpen] : cases) {
        mac.windows.others = windows;
        EXPECT_EQ(isAnyMenuOpen(mac.platform()), isOpen);
    }
}

}  // namespace
}  // namespace velko
