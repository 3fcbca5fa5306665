#include <chrono>
#include <gtest/gtest.h>
#include <limits>
#include <unordered_set>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/ForwardingPorts.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;
using Items = std::vector<MenuBarItem>;

class InventoryTest : public testing::Test {
 protected:
    ProcessID launch(const BundleID& bundleID, std::vector<SimulatedIcon> icons) {
        return mac.launch({.bundleID = bundleID, .name = bundleID, .icons = std::move(icons)});
    }

    /// Waits for a scan, a full one or one that adds to what is known, and returns its items without Apple's.
    Items scan(const std::optional<Items>& known = {}) {
        Items found;
        const auto start = mac.mainThread.now();
        const auto take = [&](Inventory::Found read) {
            found = std::move(read.items);
            scanTime = mac.mainThread.now() - start;
        };
        const auto task =
            known ? Inventory::itemsAdding(platform, *known, take) : Inventory::items(platform, {}, take);
        mac.advance(60s);
        std::erase_if(found, [](const auto& item) { return item.bundleID.starts_with("com.apple."); });
        return found;
    }

    /// The items as "app:title".
    static Strings titles(const Items& items) {
        Strings all;
        for (const auto& item : items) {
            all.push_back(item.bundleID + ":" + item.title);
        }
        return all;
    }

    SimulatedMac mac;
    Platform platform = mac.platform();
    MainThread::Uptime scanTime{};
};

TEST_F(InventoryTest, ListsAppsInBundlesThatHaveAnIdentifierAndAreNotVelko) {
    mac.launch({.bundleID = "plain", .name = "Plain"});
    mac.launch({.name = "No Identifier"});
    mac.launch({.bundleID = "tool", .name = "Tool", .bundlePath = ""});
    mac.launch({.bundleID = "helper", .name = "Helper", .bundlePath = "/Library/Helper.appex"});
    mac.launch({.bundleID = "loud", .name = "Loud", .bundlePath = "/Applications/Loud.APP"});
    mac.launch({.bundleID = "nameless", .bundlePath = "/Applications/Nameless.app/"});
    Strings names;
    for (const auto& app : Inventory::runningApps(platform)) {
        names.push_back(app.bundleID + "=" + app.name);
    }
    EXPECT_EQ(names,
              (Strings{"com.apple.MenuBarAgent=MenuBarAgent", "com.apple.systemuiserver=SystemUIServer",
                       "plain=Plain", "nameless=nameless"}));
}

TEST_F(InventoryTest, ReadsIconsFromLeftToRightWithTheFirstTextThatTheyHave) {
    const auto pid = launch("a", {{.title = "", .description = "described", .help = "no"},
                                  {.help = "help", .identifier = "no"},
                                  {.identifier = "id", .width = 20},
                                  {},
                                  {.title = "sizeless"},
                                  {.title = "endless"},
                                  {.title = "late"}});
    mac.iconElement(pid, 3)->overrides["AXTitle"] = 7.0;
    mac.iconElement(pid, 4)->overrides["AXSize"] = AXError::noValue;
    mac.iconElement(pid, 5)->overrides["AXSize"] = Size{std::numeric_limits<double>::infinity(), 24};
    mac.iconElement(pid, 6)->delay = 3s;
    const auto items = scan();
    EXPECT_LE(scanTime, 110ms);
    EXPECT_EQ(titles(items), (Strings{"a:", "a:id", "a:help", "a:described"}));
    EXPECT_EQ(items.at(1), (MenuBarItem{"a", "a", pid, "id", {1576, 0, 20, 24}}));
    EXPECT_EQ(std::unordered_set(items.begin(), items.end()).size(), 4U);
    EXPECT_EQ(Inventory::ownItemFrame(platform), (Rect{1656, 0, 28, 24}));
    mac.revokeTrust();
    EXPECT_TRUE(scan().empty());
    EXPECT_EQ(Inventory::ownItemFrame(platform), std::nullopt);
}

TEST_F(InventoryTest, KeepsTheOrderOfAppsAndIconsWithEqualLeftEdges) {
    Strings expected;
    for (const char* const name : {"slow", "b", "c", "d", "e", "f"}) {
        const auto pid = launch(name, {{.title = "1"}, {.title = "2"}});
        mac.iconElement(pid, 0)->overrides["AXPosition"] = Point{9, 0};
        mac.iconElement(pid, 1)->overrides["AXPosition"] = Point{9, 0};
        mac.accessibility.setDelay(pid, *name == 's' ? 50ms : 0ms);
        expected.insert(expected.end(), {std::string(name) + ":1", std::string(name) + ":2"});
    }
    EXPECT_EQ(titles(scan()), expected);
}

TEST_F(InventoryTest, RefreshesByReadingOnlyAppsWithoutKnownItems) {
    const auto stays = launch("stays", {{.title = "old"}});
    const auto quits = launch("quits", {{}});
    const auto known = scan();
    mac.quit(quits);
    mac.addIcon(stays, {.title = "more"});
    launch("new", {{.title = "here"}});
    EXPECT_EQ(titles(scan(known)), (Strings{"new:here", "stays:old"}));
    EXPECT_EQ(titles(scan()), (Strings{"new:here", "stays:more", "stays:old"}));
}

TEST_F(InventoryTest, KeepsWhatAnAppHadThatKeepsSilentAnywhereOnTheWay) {
    const auto pid = launch("a", {{.title = "1"}, {.title = "2"}});
    const auto known = scan();
    Inventory::Found found;
    const auto rescan = [&] {
        const auto task = Inventory::items(platform, known, [&](auto read) { found = std::move(read); });
        mac.advance(60s);
        std::erase_if(found.items, [](const auto& item) { return item.bundleID != "a"; });
        return titles(found.items);
    };
    auto& root = mac.accessibility.root(pid)->overrides["AXExtrasMenuBar"];
    for (const auto error : {AXError::cannotComplete, AXError::failure, AXError::apiDisabled}) {
        root = error;
        EXPECT_EQ(rescan(), titles(known));
    }
    root = AXError::noValue;
    EXPECT_EQ(rescan(), Strings{}) << "an answer, if an empty one";
    mac.accessibility.root(pid)->overrides.clear();
    mac.iconElement(pid, 0)->delay = 3s;
    EXPECT_EQ(rescan(), Strings{"a:2"});
    mac.iconElement(pid, 1)->delay = 3s;
    EXPECT_EQ(rescan(), titles(known));
    EXPECT_TRUE(found.isHeard);
    mac.revokeTrust();
    EXPECT_EQ(rescan(), titles(known));
    EXPECT_FALSE(found.isHeard);
}

TEST_F(InventoryTest, LetsFourHungAppsCostNoMoreThanOne) {
    launch("well", {{.title = "fine"}});
    for (int count = 1; count <= 9; ++count) {
        mac.hang(launch("hung", {{}}), true);
        EXPECT_EQ(titles(scan()), Strings{"well:fine"});
        EXPECT_EQ(scanTime / 100ms, (count + 3) / 4) << count;
    }
}

TEST_F(InventoryTest, ReadsHowItemsLookFieldByField) {
    const auto pid = launch("a", {{.title = "title", .identifier = "no"},
                                  {.title = "t", .description = "d", .help = "h", .value = "v", .width = 24},
                                  {.value = -1e21},
                                  {.value = 0.000001},
                                  {}});
    mac.iconElement(pid, 0)->overrides["AXSize"] = AXError::noValue;
    mac.iconElement(pid, 4)->overrides = {{"AXValue", true}, {"AXHelp", AXOther{}}};
    Inventory::Readings found;
    const auto messages = mac.accessibility.messages();
    const auto task = Inventory::readings(platform, {{"a", {pid}}, {"gone", {9999}}},
                                          [&](auto all) { found = std::move(all); });
    mac.advance(1s);
    EXPECT_EQ(mac.accessibility.messages() - messages, 2U + 5U + 1U)
        << "two for the list, one per item; one to the app that is gone";
    const std::vector<ItemReading> looks = {{"title|||", 0},
                                            {"t|d|h|v", 24},
                                            {"|||-1000000000000000000000", 30},
                                            {"|||0.000001", 30},
                                            {"|||1", 30}};
    EXPECT_EQ(found.at("a").items, looks);
    EXPECT_TRUE(found.at("gone").items.empty());
}

TEST_F(InventoryTest, AnswersLaterAndNeverOnceCancelled) {
    for (const char* const name : {"a", "b", "c", "d", "e"}) {
        launch(name, {});
    }
    int answers = 0;
    const auto then = [&answers](const auto&) { ++answers; };
    for (auto wait = 0us; wait <= 500us; wait += 100us) {
        auto cancelled = Inventory::items(platform, {}, then);
        mac.advance(wait);
        cancelled.cancel();
        mac.advance(1s);
        EXPECT_EQ(answers, 0) << wait.count();
    }
    const auto kept = Inventory::items(platform, {}, then);
    Inventory::readings(platform, {}, then).detach();
    EXPECT_EQ(answers, 0);
    mac.advance(1s);
    EXPECT_EQ(answers, 2);
}

TEST_F(InventoryTest, FindsWhatTheHostShowsDownToTheFourthLevel) {
    const auto host = mac.menuBarHost();
    const auto a = launch("a", {{}});
    EXPECT_EQ(Inventory::visiblePIDs(platform), (std::set{a, mac.processes.ownPID()}));

    using Children = std::vector<SimulatedElementRef>;
    const auto element = [](ProcessID pid, const char* role, Children children = {}) {
        return std::make_shared<SimulatedElement>(SimulatedElement{
            .pid = pid, .attributes = {{"AXRole", role}, {"AXChildren", std::move(children)}}});
    };
    const auto b = launch("b", {}), c = launch("c", {}), d = launch("d", {}), no = launch("no", {});
    auto level4 = element(host, "AXGroup", {element(d, "AXMenuBarItem")});
    auto level5 = element(host, "AXGroup", {element(host, "AXGroup", {element(no, "AXMenuBarItem")})});
    auto window = element(host, "AXWindow",
                          {element(a, "AXButton", {element(no, "AXApplication")}),
                           element(host, "AXButton", {element(b, "AXMenuBarItem")}),
                           element(c, "AXApplication", {element(no, "AXMenuBarItem")}),
                           element(host, "AXGroup", {level4}), element(host, "AXGroup", {level5})});
    auto& children = mac.accessibility.root(host)->overrides["AXChildren"];
    children = Children{element(no, "AXMenuBarItem"), window, element(host, "AXWindow")};
    EXPECT_EQ(Inventory::visiblePIDs(platform), (std::set{a, b, c, d}));
    children = Children{element(no, "AXMenuBarItem")};
    EXPECT_TRUE(Inventory::visiblePIDs(platform).empty());
    mac.quit(host);
    EXPECT_TRUE(Inventory::visiblePIDs(platform).empty());
}

TEST_F(InventoryTest, TakesAnAppThatHasJustEndedForNone) {
    class Lingering final : public ForwardingWorkspace {
     public:
        using ForwardingWorkspace::ForwardingWorkspace;
        [[nodiscard]] std::vector<RunningApplication> runningApplications() const override {
            return {{-1, "a", "/Applications/A.app", "A"}};
        }
        [[nodiscard]] std::vector<ProcessID> pids(const BundleID& bundleID) const override {
            auto all = ForwardingWorkspace::pids(bundleID);
            all.insert(all.begin(), -1);
            return all;
        }
    } workspace{mac.workspace};
    const Platform lingering{mac.mainThread, mac.accessibility, workspace,     mac.displays, mac.pointer,
                             mac.processes,  mac.windows,       mac.framework, mac.activity};
    EXPECT_TRUE(Inventory::runningApps(lingering).empty());
    EXPECT_EQ(AX::liveActivityHelperPID(lingering), std::nullopt);
    const auto renderer = launch("com.apple.chrono.WidgetRenderer-Activities", {});
    EXPECT_EQ(AX::liveActivityHelperPID(lingering), renderer);
}

TEST_F(InventoryTest, FindsAProcessByItsIdentifierOrElseByItsExactName) {
    mac.launch({.name = "WidgetRenderer_Activities2", .isApplication = false});
    EXPECT_EQ(AX::liveActivityHelperPID(platform), std::nullopt);
    const auto bare = mac.launch({.name = "WidgetRenderer_Activities", .isApplication = false});
    EXPECT_EQ(AX::liveActivityHelperPID(platform), bare);
    const auto app = launch("com.apple.chrono.WidgetRenderer-Activities", {});
    launch("com.apple.chrono.WidgetRenderer-Activities", {});
    EXPECT_EQ(AX::liveActivityHelperPID(platform), app);
}

}  // namespace
}  // namespace velko
