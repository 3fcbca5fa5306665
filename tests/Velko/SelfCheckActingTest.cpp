#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedIcons.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Checks/LayoutAudit.h"
#include "Velko/Checks/SelfCheck.h"
#include "tests/Velko/SelfCheckOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using SelfCheckActingTest = SelfCheckOnMac;

TEST_F(SelfCheckActingTest, HidesForAMomentAndPutsEverythingBack) {
    std::size_t fewest = 99;
    mac.onMenuBarChange = [&] { fewest = std::min(fewest, mac.visibleIcons().size()); };
    EXPECT_EQ(failuresOfHiding(), Lines{}) << all();
    mac.onMenuBarChange = nullptr;
    EXPECT_EQ(fewest, 1U);
    EXPECT_TRUE(says("OK   icons of other apps are hidden: 2 of 2")) << all();
    EXPECT_TRUE(says("OK   everything is back after a process that hid them was killed"));
    expectEverythingShows();

    mac.revokeTrust();
    EXPECT_EQ(failuresOfHiding(), Lines{}) << all();
    EXPECT_TRUE(says("TOLD the menu bar while icons are hidden: not seen"));
    expectEverythingShows();
}

TEST_F(SelfCheckActingTest, TellsHowTheSystemDeclinesToHide) {
    mac.framework.refusal = FrameworkError{.domain = "MBError", .code = 7, .description = "no"};
    EXPECT_EQ(failuresOfHiding(), (Lines{"FAIL the system accepts the wish to hide: MBError 7: no",
                                         "FAIL a second process hides icons"}));
    mac.framework.refusal.reset();
    mac.framework.exception = RaisedException{.name = "NSInvalidArgumentException", .reason = "unknown"};
    EXPECT_EQ(failuresOfHiding().front(),
              "FAIL the system accepts the wish to hide: VKAssessment 1: "
              "NSInvalidArgumentException: unknown");
    mac.framework.exception.reset();
    mac.framework.answerDelay = 30s;
    EXPECT_EQ(failuresOfHiding().front(), "FAIL the system answers the wish to hide: no answer");
    mac.framework.answerDelay = SimulatedFramework::usualDelay;
    mac.advance(1min);
    expectEverythingShows();
    framework.hidesNothing = true;
    EXPECT_EQ(failuresOfHiding(), Lines{"FAIL icons of other apps are hidden: 0 of 2"});
    expectEverythingShows();
}

TEST_F(SelfCheckActingTest, NoticesIconsThatDoNotComeBack) {
    bench.outlivesItself = true;
    EXPECT_EQ(failuresOfHiding(),
              Lines{"FAIL everything is back after a process that hid them was killed: missing: "
                    "com.example.mail, com.example.chat"});
    bench.outlivesItself = false;
    bench.killHider();
    bench.starts = false;
    EXPECT_EQ(failuresOfHiding(), Lines{"FAIL a second process is started"});
    bench.starts = true;
    framework.neverEnds = true;
    EXPECT_EQ(failuresOfHiding().front(),
              "FAIL everything is back after the end of hiding: missing: "
              "com.example.mail, com.example.chat");
}

TEST_F(SelfCheckActingTest, HidesForAnotherProcessUntilItsTimeIsUp) {
    std::size_t fewest = 99;
    mac.onMenuBarChange = [&] { fewest = std::min(fewest, mac.visibleIcons().size()); };
    const auto start = mac.mainThread.now();
    EXPECT_EQ(SelfCheck::hideForOthers(subject()), 0);
    mac.onMenuBarChange = nullptr;
    EXPECT_EQ(fewest, 1U);
    EXPECT_LT(mac.mainThread.now() - start, 30s);
    expectEverythingShows();
    mac.framework.refusal = FrameworkError{.domain = "MBError", .code = 7, .description = "no"};
    EXPECT_EQ(SelfCheck::hideForOthers(subject()), 1);
}

TEST_F(SelfCheckActingTest, LeavesTheHidingToAnotherVelko) {
    mac.launch({.bundleID = "app.velko.mac", .name = "Velko"});
    EXPECT_EQ(failuresOfHiding(), Lines{"FAIL no other Velko is running: quit Velko, and then try again"});
    EXPECT_EQ(mac.cost().engineCalls, 0U);
}

/// Somebody who does what the check asks for, half a second later.
class ObligingPerson {
 public:
    ObligingPerson(SimulatedMac& mac, ProcessID other) : mac_(mac), other_(other) {}

    std::vector<SimulatedClick::Telling> tellings{SimulatedClick::Telling::usual};
    bool confusesButtons = false;

    void operator()(const std::string& request) {
        const auto asksFor = [&](const char* word) { return request.find(word) != std::string::npos; };
        if (asksFor("other app")) {
            later_ = mac_.mainThread.after(500ms, [this] { mac_.openMenu(other_); });
        } else if (!asksFor("six requests")) {
            const SimulatedClick click{.isRight = asksFor("right") && !confusesButtons,
                                       .option = asksFor("Option"),
                                       .control = asksFor("Control"),
                                       .telling = tellings.at(count_++ % tellings.size()),
                                       .held = asksFor("hold it") ? 2s : 0s};
            later_ = mac_.mainThread.after(500ms, [this, click] { mac_.clickBroom(click); });
        }
    }

 private:
    SimulatedMac& mac_;
    ProcessID other_;
    std::size_t count_ = 0;
    Task later_;
};

TEST_F(SelfCheckActingTest, AsksForClicksAndTellsHowTheyCome) {
    using Telling = SimulatedClick::Telling;
    for (const auto& tellings : std::vector<std::vector<Telling>>{
             {Telling::usual}, {Telling::mouse}, {Telling::system}, {Telling::doubled}, {Telling::other}}) {
        ObligingPerson helper(mac, chat);
        helper.tellings = tellings;
        person = std::ref(helper);
        EXPECT_EQ(failures({Option::clicks}, "clicks"), Lines{}) << all();
        mac.closeMenu();
    }
    EXPECT_TRUE(says("OK   it was understood: right with no key")) << all();
    EXPECT_TRUE(says("TOLD Click on it.: the tap, 500")) << all();
    EXPECT_TRUE(says("TOLD a window of that menu: level 101, of com.example.chat")) << all();
    EXPECT_EQ(bench.removals, 5);

    ObligingPerson clumsy(mac, chat);
    clumsy.confusesButtons = true;
    person = std::ref(clumsy);
    EXPECT_EQ(failures({Option::clicks}, "clicks"), Lines{"FAIL it was understood: left with no key"})
        << all();
    mac.closeMenu();
    ObligingPerson unlucky(mac, chat);
    unlucky.tellings = {Telling::lost};
    person = std::ref(unlucky);
    EXPECT_EQ(failures({Option::clicks}, "clicks").front(), "FAIL it was understood: as no click") << all();
    person = nullptr;
    mac.closeMenu();
    EXPECT_EQ(failures({Option::clicks}, "clicks"), Lines{}) << all();
    EXPECT_TRUE(says("nothing came in twenty seconds"));
}

TEST_F(SelfCheckActingTest, LooksAtTheIconAndItsMenu) {
    EXPECT_EQ(failures({Option::windows}, "icon"), Lines{}) << all();
    EXPECT_TRUE(says("OK   timers come while a menu is open: 29 of 30") || says("open: 30 of 30")) << all();
    EXPECT_EQ(mac.statusItem.menu(), nullptr);
    bench.menusThatStay = 1;
    EXPECT_EQ(failures({Option::windows}, "icon"), Lines{"FAIL a menu of Velko's opens, and closes again"});
    EXPECT_EQ(mac.statusItem.menu(), nullptr) << "It is closed in the end.";
    mac.putBroom(BroomSpot::nowhere);
    EXPECT_EQ(failures({Option::windows}, "icon").front(), "FAIL the icon is where a person can see it")
        << all();
}

TEST_F(SelfCheckActingTest, WatchesTimersAndChangesOfIcons) {
    const Task changing = mac.mainThread.every(7s, [this, count = 0]() mutable {
        mac.changeIcon(chat, 0, [&](SimulatedIcon& icon) { icon.title = std::to_string(++count); });
    });
    EXPECT_EQ(failures({Option::watch}, "timers and notices"), Lines{}) << all();
    EXPECT_TRUE(says("TOLD icons that changed: com.example.chat")) << all();
    EXPECT_TRUE(says("a timer of one second, without an activity: 60 beats")) << all();
    EXPECT_EQ(mac.registered().elementObservers, 0U);
}

TEST_F(SelfCheckActingTest, DrawsEverySurface) {
    pictures = folder.path() / "pictures";
    EXPECT_EQ(failures({}, "surfaces"), Lines{}) << all();
    EXPECT_TRUE(std::filesystem::is_directory(pictures));
    for (const char* const name :
         {"settings-menu-bar", "settings-general", "settings-about", "search", "message",
          "note-with-1-question", "note-with-12-questions", "shelf-with-1-tile", "shelf-with-9-tiles",
          "shelf-with-40-tiles", "setup-1", "setup-5", "setup-without-permission-2"}) {
        for (const char* const look : {"-light.png", "-dark.png"}) {
            EXPECT_EQ(std::ranges::count(bench.drawn, std::string(name) + look), 1) << name << look;
        }
    }
    EXPECT_TRUE(says("OK   every symbol exists: "));
    bench.unknownSymbol = "power";  // of the broom's menu
    EXPECT_EQ(failures({}, "surfaces"), Lines{"FAIL every symbol exists: power"});
    EXPECT_EQ(mac.cost().engineCalls, 0U);
    EXPECT_EQ(mac.accessibility.prompts(), 0);

    bench.unknownSymbol = "gearshape";
    bool isSecond = false;
    bench.draw = [&](const view::Node& tree, bool isDark) {
        auto boxes = SimulatedBench::boxesOf(tree);
        isSecond = !isSecond;
        if (isDark) {
            boxes.back().frame.x += 200;  // sticks out
        } else if (isSecond) {
            boxes.back().frame.width = 290;
        }
        return boxes;
    };
    failures({}, "surfaces");
    EXPECT_TRUE(says("FAIL every symbol exists: gearshape")) << all();
    EXPECT_TRUE(says("FAIL search, dark: is laid out well: ")) << all();
    EXPECT_TRUE(says("FAIL search, light: is laid out well: ") &&
                says("FAIL search, light: is the same after an update: "))
        << all();
    bench.draw = [](const view::Node&, bool) { return std::nullopt; };
    failures({}, "surfaces");
    EXPECT_TRUE(says("FAIL shelf with 9 tiles, light: is drawn")) << all();
}

TEST_F(SelfCheckActingTest, OpensEverySurfaceForAMoment) {
    const Lines failed = failures({Option::windows}, "windows");
    for (const Surfaces::Traits& traits : Surfaces::all()) {
        // The guide needs a window of System Settings that it can point at.
        EXPECT_EQ(says("OK   " + std::string(traits.name) + ": is open, and whole on one screen"),
                  traits.kind != Surfaces::Kind::permissionGuide)
            << all();
        EXPECT_FALSE(mac.surfaces.surface(traits.kind).isOpen());
    }
    // The simulated Mac draws no windows for Accessibility, so VoiceOver finds nothing there.
    EXPECT_TRUE(std::ranges::all_of(failed, [](const std::string& line) {
        return line.find("VoiceOver finds every control") != std::string::npos;
    })) << all();
}

}  // namespace
}  // namespace velko
