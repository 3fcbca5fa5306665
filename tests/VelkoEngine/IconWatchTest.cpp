#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Watching/IconWatch.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

class IconWatchTest : public testing::Test {
 protected:
    IconWatchTest() {
        // The system's own icons would be in every first look.
        for (const ProcessID pid : {mac.menuBarHost(), mac.workspace.pids("com.apple.systemuiserver")[0]}) {
            while (mac.iconElement(pid, 0) != nullptr) {
                mac.removeIcon(pid, 0);
            }
        }
    }
    ~IconWatchTest() override {
        watch.reset();
        mac.advance(1min);
        EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
    }

    ProcessID launch(const BundleID& bundleID) {
        return mac.launch({.bundleID = bundleID, .name = "A", .icons = {{}}});
    }

    Lines logged(MainThread::Uptime duration) {
        mac.advance(duration);
        return std::exchange(lines, {});
    }

    SimulatedMac mac;
    Lines lines;
    std::optional<IconWatch> watch{std::in_place, mac.platform(),
                                   [this](const std::string& line) { lines.push_back(line); }};
};

TEST_F(IconWatchTest, DescribesWhatIsThereAndLogsEveryChange) {
    const ProcessID a = mac.launch(
        {.bundleID = "a",
         .name = "A",
         .icons = {{.title = "12°", .description = "", .help = "Weather", .value = 0.5, .width = 30.9}, {}}});
    mac.launch({.bundleID = "no.icons", .name = "No icons"});
    watch->start();
    watch->start();
    EXPECT_EQ(logged(999ms), (Lines{"icon watch started",
                                    "start a: AXTitle=\"12°\" AXHelp=\"Weather\" AXValue=\"0.5\" "
                                    "size=30x24, size=30x24 [visible]"}));
    EXPECT_EQ(logged(10s), Lines{});
    const ProcessID b = mac.launch({.bundleID = "b", .name = "B", .icons = {{.value = "on"}}});
    mac.changeIcon(a, 0, [](SimulatedIcon& icon) { icon = {.title = "13°"}; });
    mac.removeIcon(a, 1);
    EXPECT_EQ(logged(1s), (Lines{"NOTIFIED AXTitleChanged: a \"13°\"", "NOTIFIED AXValueChanged: a \"13°\"",
                                 "NOTIFIED AXResized: a \"13°\"", "NOTIFIED AXUIElementDestroyed: a \"\"",
                                 "CHANGED a: AXTitle=\"13°\" size=30x24 [visible]",
                                 "appeared b: AXValue=\"on\" size=30x24 [visible]"}));
    AssessmentEngine engine(mac.platform());
    engine.apply(VisibilityPlan::allow({"b"}), false, [](const auto&) {});
    EXPECT_EQ(logged(2s), Lines{"CHANGED a: AXTitle=\"13°\" size=30x24 [hidden]"});
    mac.quit(b);
    EXPECT_EQ(logged(3s), Lines{"gone b"});
    EXPECT_EQ(mac.accessibility.observers(), 1U);
    watch->stop();
    EXPECT_EQ(logged(0s), Lines{"icon watch stopped"});
    EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
    watch->start();
    EXPECT_EQ(logged(100ms).back(), "start a: AXTitle=\"13°\" size=30x24 [hidden]") << "it has forgotten";
}

TEST_F(IconWatchTest, FollowsAnAppThatWasStartedAnewAndOneThatNobodyKnows) {
    const ProcessID first = launch("a");
    watch->start();
    logged(5500ms);
    mac.quit(first);
    const ProcessID second = launch("a");
    EXPECT_EQ(logged(2s), Lines{}) << "nothing that a person could see has changed";
    mac.changeIcon(second, 0, [](SimulatedIcon& icon) { icon.title = "u"; });
    EXPECT_EQ(logged(100ms), Lines{"NOTIFIED AXTitleChanged: a \"u\""}) << "it observes the new process";
    mac.changeIcon(second, 0, [](SimulatedIcon& icon) { icon.title = "v"; });
    mac.advance(0s);
    mac.quit(second);
    EXPECT_EQ(logged(2s), (Lines{"NOTIFIED AXTitleChanged: ? \"v\"", "gone a"}));
}

TEST_F(IconWatchTest, TakesAHungAppForGoneAndIsNotHeldUp) {
    std::vector<ProcessID> pids(60);
    std::ranges::generate(pids, [&, i = 0]() mutable { return launch("a" + std::to_string(i++)); });
    watch->start();
    logged(3s);
    for (const ProcessID pid : pids) {
        mac.hang(pid, true);
    }
    const auto start = mac.mainThread.now();
    EXPECT_EQ(logged(10s).size(), 60U) << "each is gone once";
    EXPECT_EQ(mac.mainThread.now() - start, 10s) << "the main thread waits for nobody";
    EXPECT_LE(mac.registered().work, 5U) << "looks that take longer than a second do not pile up";
}

TEST_F(IconWatchTest, WaitsForOneSlowIconInATurnAndLeavesItsAppOutThen) {
    for (int number = 0; number < 10; ++number) {
        mac.iconElement(launch("a" + std::to_string(number)), 0)->delay = 1s;
    }
    MainThread::Uptime longest{0};
    const Task beat = mac.mainThread.every(10ms, [&, last = mac.mainThread.now()]() mutable {
        longest = std::max(longest, mac.mainThread.now() - std::exchange(last, mac.mainThread.now()));
    });
    watch->start();
    const Lines told = logged(10s);
    EXPECT_EQ(std::ranges::count(told, "no notifications of a7: it does not answer in time"), 1);
    EXPECT_LE(longest, 110ms);
}

TEST_F(IconWatchTest, LeavesNothingBehindWheneverItIsDestroyed) {
    const ProcessID a = launch("a");
    mac.accessibility.setDelay(a, 50ms);
    for (const auto after : {0ms, 1ms, 100ms, 1000ms, 5000ms}) {
        watch.emplace(mac.platform(), [this](const std::string& line) { lines.push_back(line); });
        watch->start();
        mac.advance(after);
        mac.changeIcon(a, 0, [](SimulatedIcon& icon) { icon.width += 1; });
        mac.advance(0s);
        watch.reset();
        lines.clear();
        EXPECT_EQ(logged(5s), Lines{});
        EXPECT_EQ(mac.registered(), SimulatedMac::Registered{});
    }
}

}  // namespace
}  // namespace velko
