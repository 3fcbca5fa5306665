#include <chrono>
#include <gtest/gtest.h>
#include <utility>

#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Watching/SystemEvents.h"

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
    mac.launch({.name = "Without identifier", .isRegular = true});
    EXPECT_EQ(deliveries(400ms), Strings{});
    const auto last = mac.launch({.bundleID = "c", .name = "C"});
    EXPECT_EQ(deliveries(499ms), Strings{});
    EXPECT_EQ(deliveries(1ms), Strings{"apps: launched a, launched ?, launched c"});
    mac.setDisplays({SimulatedDisplays::notched()});
    mac.session.changeSpace();
    mac.session.returnToUser();
    mac.quit(last);
    EXPECT_EQ(deliveries(10s),
              Strings{"environment: displays changed, Space changed, session active, quit c"});
    mac.launch({.bundleID = "d", .name = "D"});
    EXPECT_EQ(deliveries(10s), Strings{"apps: launched d"});
}

TEST_F(SystemEventsTest, LookAgainTwoSecondsAfterWakingUnlessTheyAreGone) {
    mac.session.sleepAndWake(8h);
    EXPECT_EQ(deliveries(1999ms), Strings{"environment: wake, screens woke"});
    EXPECT_EQ(deliveries(500ms), Strings{});
    EXPECT_EQ(deliveries(1ms), Strings{"environment: wake settled"});
    mac.session.sleepAndWake(8h);
    EXPECT_EQ(deliveries(100ms), Strings{});
    mac.session.changeSpace();
    events.reset();
    EXPECT_EQ(deliveries(10s), Strings{});
}

TEST(ProcessRoll, CountsEachLaunchAndEndOnceWhicheverSourceTellsItFirst) {
    const struct {
        const char* story;  // + and - change the list, c compares it, L and E are notices, ? is one that
                            // names nothing
        const char* events;
    } cases[] = {
        {"+c", "launched"},
        {"+cL", "launched"},
        {"L+c", "launched"},
        {"Lc+c", "launched"},
        {"LcE", "launched quit"},
        {"+c-c", "launched quit"},
        {"+cL-cE", "launched quit"},
        {"+cLEc-c", "launched quit"},
        {"+c-c?", "launched quit"},
        {"+c?-c", "launched quit quit"},
        {"+c-cb+c", "launched quit launched"},
        {"+c-cbE", "launched quit quit"},
    };
    using Kind = WorkspaceNotice::Kind;
    for (const auto& [story, expected] : cases) {
        ProcessRoll roll({});
        std::vector<RunningApplication> list;
        ProcessRoll::Events events;
        for (const char* act = story; *act != '\0'; ++act) {
            ProcessRoll::Events heard;
            switch (*act) {
                case '+': list = {{7, "a", "/A.app", {}}}; break;
                case '-': list.clear(); break;
                case 'c': heard = roll.compare(list); break;
                case 'L': heard = roll.hear({.kind = Kind::launched, .pid = 7, .bundleID = "a"}); break;
                case 'E': heard = roll.hear({.kind = Kind::terminated, .pid = 7, .bundleID = "a"}); break;
                case '?': heard = roll.hear({.kind = Kind::terminated}); break;
                default: roll.beginBurst();
            }
            events.insert(events.end(), heard.begin(), heard.end());
        }
        std::string text;
        for (const auto& event : events) {
            text += std::string(text.empty() ? "" : " ") + (event.isLaunch ? "launched" : "quit");
        }
        EXPECT_EQ(text, expected) << story;
    }
    const std::vector<RunningApplication> helpers{{8, "b", "/B.xpc", {}}, {9, {}, {}, {}}};
    EXPECT_TRUE(ProcessRoll({}).compare(helpers).empty()) << "they have no icons";
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
