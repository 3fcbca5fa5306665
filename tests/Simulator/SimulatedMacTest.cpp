#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Icons = std::vector<BundleID>;

class SimulatedMacTest : public testing::Test {
 protected:
    ProcessID launch(const std::string& name, double width = 30) {
        return mac.launch({.bundleID = "com.example." + name, .name = name, .icons = {{.width = width}}});
    }

    /// Asks the framework as the engine does. The allowlist is in force as long as the assertion exists.
    [[nodiscard]] PrivateFramework::ObjectRef ask(const std::vector<BundleID>& allowed,
                                                  const std::vector<int>& systemItems = {0, 1, 2, 3}) {
        auto& framework = mac.framework;
        EXPECT_TRUE(framework.open(framework.path));
        auto assertion = framework.makeAssertion("MBAssessmentModeAssertion").value();
        const auto configuration =
            framework.makeConfiguration("MBAssessmentModeConfiguration", systemItems, allowed).value();
        EXPECT_TRUE(framework.activate(assertion, configuration, [](const auto& /*error*/) {}));
        return assertion;
    }

    [[nodiscard]] double left(ProcessID pid, std::size_t index = 0) {
        return std::get<Point>(mac.iconElement(pid, index)->attributes.at("AXPosition")).x;
    }

    SimulatedMac mac;
};

TEST_F(SimulatedMacTest, HidesExactlyWhatTheListInForceHidesAndClosesTheRanks) {
    const ProcessID pidA = launch("a", 20);
    const ProcessID pidB = launch("b", 40);
    const ProcessID pidC = launch("c", 60);
    const double edgeOfB = left(pidB);
    const auto assertion = ask({"com.example.a", "app.velko.mac", "com.example.c", "com.example.absent"});
    mac.advance(40ms);
    EXPECT_EQ(mac.visibleIcons(), (Icons{"com.example.c", "com.example.a", "app.velko.mac"}));
    EXPECT_EQ(left(pidC), left(pidA) - 60) << "c moves into b's place";
    EXPECT_EQ(left(pidB), edgeOfB) << "a hidden icon answers with its last place";
    const auto forgetful = ask({}, {0, 2});
    mac.advance(1s);
    EXPECT_EQ(mac.visibleIcons(), Icons{});
    EXPECT_EQ(mac.visibleSystemItems(), (std::vector<std::string>{"Wi-Fi", "Clock"}));
}

TEST_F(SimulatedMacTest, LaysOutAfterEveryChangeOfAnIcon) {
    const ProcessID pid = launch("a", 30);
    const ProcessID neighbour = launch("b", 30);
    const double start = left(neighbour);
    int changes = 0;
    mac.onMenuBarChange = [&] { ++changes; };
    mac.changeIcon(pid, 0, [](SimulatedIcon& icon) { icon.width = 50; });
    EXPECT_EQ(left(neighbour), start - 20);
    mac.addIcon(pid, {.title = "second", .width = 10});
    EXPECT_EQ(left(pid, 1), left(neighbour) - 10);
    mac.removeIcon(pid, 0);
    EXPECT_EQ(left(neighbour), start + 30);
    mac.setDisplays({SimulatedDisplays::plain({}, {3000, 1000})});
    EXPECT_EQ(left(neighbour), start + 30 + 1080);
    mac.quit(pid);
    EXPECT_EQ(mac.visibleIcons(), (Icons{"com.example.b", "app.velko.mac"}));
    EXPECT_EQ(changes, 5);
}

TEST_F(SimulatedMacTest, PaintsTheBarWithTheBroomAndTheClockInAsManyRowsAsItTakes) {
    const ProcessID mail =
        mac.launch({.bundleID = "com.example.mail", .name = "Mail", .icons = {{.title = "3"}}});
    const std::string few = mac.menuBarPicture();
    EXPECT_EQ(few.substr(few.find_first_not_of(' ')),
              "Mail 3  \U0001F9F9  VPN  Wi-Fi  Control Center  Mon 2 Mar 08:00:00");
    for (int i = 0; i < 30; ++i) {
        launch("SampleApp");
    }
    mac.openMenu(mail);
    const std::string many = mac.menuBarPicture();
    EXPECT_EQ(std::ranges::count(many, '\n'), 4) << many;
    EXPECT_NE(many.find("SampleApp  Mail 3  \U0001F9F9  VPN"), std::string::npos) << many;
    EXPECT_LE(many.find('\n'), std::size_t{108});
    EXPECT_TRUE(many.ends_with("\nMail has its menu open")) << many;
}

TEST_F(SimulatedMacTest, KnowsGapsInHidingFromHidingBegunAnew) {
    auto first = ask({"com.example.a"});
    mac.advance(1s);
    const auto second = ask({"com.example.b"});
    mac.advance(1s);
    first.reset();
    EXPECT_TRUE(mac.framework.gaps().empty()) << "the newer one was in force before the older one ended";

    ASSERT_TRUE(mac.framework.invalidate(second));
    mac.advance(1s);
    auto third = ask({});
    mac.advance(1s);
    EXPECT_TRUE(mac.framework.gaps().empty()) << "everything was shown on purpose";

    third.reset();
    const auto fourth = ask({});
    mac.advance(1s);
    ASSERT_EQ(mac.framework.gaps().size(), 1U) << "the old one ended before the new one was in force";
    EXPECT_EQ(mac.framework.gaps()[0].to - mac.framework.gaps()[0].from, mac.framework.answerDelay);
    EXPECT_EQ(mac.framework.activeAssertions(), 1U);
    std::erase_if(mac.framework.classes.at("MBAssessmentModeAssertion"),
                  [](const auto& method) { return method.selector == "invalidate"; });
    EXPECT_TRUE(mac.framework.invalidate(fourth)) << "a message that is not understood is not sent";
    EXPECT_TRUE(mac.framework.inForce());
}

TEST_F(SimulatedMacTest, OpensAnAppsMenuForAClickButNotVelkosWhichVelkoOpens) {
    const ProcessID pid = launch("a");
    EXPECT_TRUE(mac.clickIcon(pid));
    EXPECT_EQ(mac.windows.menuOwner(), pid);
    EXPECT_TRUE(mac.clickIcon(mac.processes.ownPID()));
    EXPECT_EQ(mac.windows.menuOwner(), std::nullopt);
}

TEST_F(SimulatedMacTest, DelaysTimersOnlyWhileNobodyLooksAtTheProgram) {
    int beats = 0;
    const Task beat = mac.mainThread.every(1s, [&] { ++beats; });
    mac.activity.nap();
    mac.advance(16s);
    EXPECT_LE(beats, 3);
    beats = 0;
    mac.statusItem.openMenu({{.title = "Quit", .action = [] {}}}, [] {});
    mac.advance(16s);
    EXPECT_GE(beats, 15);
}

TEST(SimulatedMac, ClosesOnlyPassingSurfacesWithEscape) {
    SimulatedMac mac;
    for (const auto kind : {Surfaces::Kind::note, Surfaces::Kind::settings}) {
        auto& surface = mac.surfaces.surface(kind);
        surface.open({.title = "Title", .content = view::text("a", "b")});
        EXPECT_EQ(surface.press({.key = view::Shortcut::Key::escape}), kind == Surfaces::Kind::note);
        EXPECT_EQ(surface.isOpen(), kind == Surfaces::Kind::settings);
    }
}

TEST(SimulatedMac, FindsWhatNobodyCouldUse) {
    const auto twin = [](std::string id, bool isEnabled = true) {
        return view::Node{
            .id = std::move(id),
            .isEnabled = isEnabled,
            .content = view::Button{.title = "Do it", .shortcut = {.key = view::Shortcut::Key::enter}}};
    };
    EXPECT_EQ(faultIn(view::column("all", {twin("a"), twin("b", false)})), std::nullopt);
    for (auto& bad : std::vector<std::vector<view::Node>>{
             {twin("a"), twin("b")},
             {twin("a"), view::text("a", "again")},
             {twin("")},
             {{.id = "silent", .content = view::Button{}}},
             {{.id = "p", .label = "Place", .content = view::Picker{.options = {"one"}, .selected = 1}}}}) {
        EXPECT_NE(faultIn(view::column("all", std::move(bad))), std::nullopt);
    }
}

TEST(SimulatedMac, TellsTheSameStoryTwice) {
    const auto story = [] {
        SimulatedMac mac;
        std::string log;
        mac.onMenuBarChange = [&] { log += mac.menuBarPicture() + "\n"; };
        const Task reading = mac.mainThread.every(1s, [&] {
            const auto title =
                mac.accessibility.attribute(mac.accessibility.application(302, 100ms), "AXTitle");
            log += (title ? std::get<std::string>(*title) : "no title") + "\n";
        });
        mac.launch({.bundleID = "com.example.a", .name = "a", .icons = {{}}});
        mac.advance(1500ms);
        mac.hang(302, true);
        mac.session.sleepAndWake(1h);
        mac.advance(2s);
        return log;
    };
    EXPECT_EQ(story(), story());
    EXPECT_NE(story().find("SystemUIServer\n"), std::string::npos);
    EXPECT_NE(story().find("no title\n"), std::string::npos);
}

}  // namespace
}  // namespace velko
