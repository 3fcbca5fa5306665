#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/Time/HostMainThread.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Watching/ClickHistory.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 20s;  // far more than any run takes

TEST(HostMainThread, MakesReadsSideBySideAndAnswersThemOneByOne) {
    HostMainThread host;
    std::atomic<std::size_t> underWay = 0;
    std::size_t answers = 0;
    std::vector<Task> tasks;
    tasks.reserve(HostMainThread::mostReadsAtOnce);
    for (std::size_t read = 0; read < HostMainThread::mostReadsAtOnce; ++read) {
        tasks.push_back(host.background(
            [&] {
                ++underWay;
                const auto giveUpAt = host.now() + patience;
                while (underWay < HostMainThread::mostReadsAtOnce && host.now() < giveUpAt) {
                    host.spend(100us);
                }
                return underWay == HostMainThread::mostReadsAtOnce;
            },
            [&](bool met) { answers += met ? 1 : 0; }));
    }
    EXPECT_TRUE(host.runUntil([&] { return answers == HostMainThread::mostReadsAtOnce; }, patience));
}

TEST(HostMainThread, WaitsForReadsThatRunAndDropsTheRestWhenItGoes) {
    std::atomic<bool> begun = false;
    std::atomic<bool> ended = false;
    bool ran = false;
    Task reading;
    Task waiting;
    {
        HostMainThread host;
        reading = host.background(
            [&] {
                begun = true;
                begun.notify_one();
                host.spend(20ms);
                ended = true;
                return 0;
            },
            [&](int) { ran = true; });
        waiting = host.after(0s, [&] { ran = true; });
        host.post([&] { ran = true; });
        begun.wait(false);
    }
    EXPECT_TRUE(ended);
    EXPECT_FALSE(ran);
    EXPECT_FALSE(waiting.isPending());
}

/// Twelve apps with two icons each, on a machine whose main thread keeps changing some of them. Two answer
/// slowly, two hang, and the others are well.
class BusyMac : public testing::Test {
 protected:
    BusyMac() {
        for (int number = 0; number < 12; ++number) {
            pids.push_back(launch("app" + std::to_string(number)));
        }
        mac.accessibility.setDelay(pids[0], 2ms);
        mac.accessibility.setDelay(pids[1], 5ms);
        mac.hang(pids[2], true);
        mac.hang(pids[3], true);
        clicks.start();
    }

    ProcessID launch(const std::string& name) {
        return mac.launch({.bundleID = name, .name = name, .icons = {{.title = name}, {.title = name}}});
    }

    /// What happens to the machine in that time: apps come and go, icons change, the user clicks.
    void live() {
        ++turns;
        mac.quit(pids[4]);
        pids[4] = launch("app4");
        mac.changeIcon(pids[5], 0, [this](SimulatedIcon& icon) {
            icon.title = "turn " + std::to_string(turns);
            icon.width = 30 + turns % 9;
        });
        mac.addIcon(pids[6], {.title = "third"});
        mac.removeIcon(pids[6], 0);
        mac.hang(pids[2], turns % 8 < 6);
        mac.clickIcon(pids[turns % 2 == 0 ? 7 : 5]);
    }

    /// Starts something and waits for its answer, while other things happen to the machine.
    template <class Answer, class Start>
    Answer answerOf(Start start) {
        std::optional<Answer> answer;
        const Task task = start([&answer](Answer came) { answer = std::move(came); });
        EXPECT_TRUE(host.runUntil([&answer] { return answer.has_value(); }, patience));
        return std::move(answer).value_or(Answer{});
    }

    static std::ptrdiff_t itemsOf(const std::vector<MenuBarItem>& items, const BundleID& app) {
        return std::ranges::count(items, app, &MenuBarItem::bundleID);
    }

    HostMainThread host;
    SimulatedMac mac{{.host = &host}};
    std::vector<ProcessID> pids;
    int turns = 0;
    std::vector<BundleID> clicked;
    ClickHistory clicks{mac.platform(), [this] { return KnownBar{.icons = {{pids[5], {}}, {pids[7], {}}}}; },
                        [this](const BundleID& app) { clicked.push_back(app); }};
};

using HostMainThreadOnABusyMac = BusyMac;

TEST_F(HostMainThreadOnABusyMac, ScansAndHitTestsWhileAppsComeAndGo) {
    using Inventory::Found;
    const Platform platform = mac.platform();
    const Task life = host.every(2ms, [this] { live(); });
    for (int round = 0; round < 2; ++round) {
        bool looked = false;
        const Task looking = host.background([&platform] { return Inventory::visiblePIDs(platform); },
                                             [&looked](const auto&) { looked = true; });
        auto found = answerOf<Found>([&](auto then) { return Inventory::items(platform, {}, then); });
        found =
            answerOf<Found>([&](auto then) { return Inventory::itemsAdding(platform, found.items, then); });
        const auto& items = found.items;
        for (const auto* const app : {"app0", "app1", "app5", "app7", "app8", "app11"}) {
            EXPECT_EQ(itemsOf(items, app), 2) << app;
        }
        EXPECT_EQ(itemsOf(items, "app3"), 0) << "it hangs";

        const std::map<BundleID, Inventory::Watched> apps{
            {"app1", {pids[1]}}, {"app4", {pids[4]}}, {"app5", {pids[5]}}};
        const auto readings = answerOf<Inventory::Readings>(
            [&](auto then) { return Inventory::readings(platform, apps, then); });
        EXPECT_EQ(readings.at("app1").items.size(), 2U);
        EXPECT_EQ(readings.at("app5").items.size(), 2U);
        EXPECT_TRUE(host.runUntil([&looked] { return looked; }, patience));
    }
    EXPECT_TRUE(host.runUntil([this] { return std::ranges::count(clicked, "app7") >= 3; }, patience));
    EXPECT_EQ(std::ranges::count(clicked, "app3"), 0);
}

}  // namespace
}  // namespace velko
