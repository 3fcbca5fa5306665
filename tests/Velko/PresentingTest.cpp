#include <variant>

#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Velko/Broom/BroomIcon.h"
#include "Velko/Flows/GlobalKeys.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Presenting.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "tests/Velko/BroomOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

/// A Mac with an app in each section, and one in the bar that an audience may see.
class PresentingTest : public BroomOnMac {
 protected:
    PresentingTest() {
        layout.offersPresenting = true;
        layout.shareKeep = {"app.shared"};
        launch("app.bar", Section::bar);
        tucked = launch("app.tucked", Section::tucked);
        launch("app.shared", Section::tucked);
    }

    void present() {
        EXPECT_EQ(velko->presenting().start(), std::nullopt);
        pass(1s);
    }
    /// Whether only what an audience may see shows.
    [[nodiscard]] bool isSafe() const {
        return shows("app.shared") && !shows("app.bar") && !shows("app.tucked");
    }
    [[nodiscard]] bool isTidy() const { return shows("app.bar") && !shows("app.tucked"); }

    ProcessID tucked = 0;
};

TEST_F(PresentingTest, HidesFromAnAudienceWhateverHappens) {
    layout.reveal.hover = true;
    startBroom();
    velko->showMe().start("app.tucked");
    velko->toggle();
    present();
    EXPECT_TRUE(isSafe());
    mac.changeIcon(tucked, 0, [](SimulatedIcon& icon) { icon.title = "1 new message"; });
    const ProcessID renderer = mac.launch({.name = "WidgetRenderer_Activities", .isApplication = false});
    mac.processes.work(renderer, 0.01);
    launch("app.new");
    pass(30s);
    EXPECT_FALSE(velko->note().isAnythingToAsk());
    velko->toggle();
    velko->toggle(true);
    velko->revealByPointer();
    velko->showMe().start("app.tucked");
    velko->open("app.tucked");
    velko->handle(RevealEvent::autoTuck());
    pass(30s);
    EXPECT_TRUE(isSafe() && !shows("app.new"));
    EXPECT_FALSE(logged("[popout]"));
    EXPECT_TRUE(logged("[open] not while presenting: app.tucked"));
    mac.processes.work(renderer, 0);
    pass(5min);
    velko->presenting().stop();
    pass(1s);
    EXPECT_TRUE(shows("app.tucked")) << "what was out before is out again";
    EXPECT_TRUE(velko->note().isAnythingToAsk()) << "now it asks";
    expectSettled();
}

TEST_F(PresentingTest, IsInTheMenuOnceItIsOfferedAndTheBroomSaysIt) {
    layout.offersPresenting = false;
    startBroom();
    EXPECT_FALSE(choose("Presenting"));
    mac.statusItem.closeMenu();
    pass(1s);
    EXPECT_EQ(velko->presenting().start(), "Presenting is switched off in Velko's settings.");
    velko->preferences().setSwitch(Switch::presenting, true);
    EXPECT_TRUE(choose("Presenting"));
    pass(1s);
    EXPECT_TRUE(isSafe());
    EXPECT_EQ(mac.statusItem.toolTip(),
              "Presenting: only the icons that you chose show. Click for the menu.");
    EXPECT_EQ(mac.statusItem.image(), (StatusItem::Image{BroomDrawing::icon({.isPresenting = true})}));
    click();
    ASSERT_NE(mac.statusItem.menu(), nullptr) << "there is nothing that a click could bring out";
    EXPECT_FALSE(mac.statusItem.menu()->front().isEnabled) << "nothing can be opened";
    EXPECT_TRUE(mac.statusItem.menu()->at(1).isChecked);
    EXPECT_TRUE(mac.statusItem.chooseFromMenu("Presenting"));
    pass(1s);
    EXPECT_TRUE(isTidy());
    EXPECT_EQ(mac.statusItem.image(), (StatusItem::Image{BroomDrawing::icon({})}));
    present();
    velko->preferences().setSwitch(Switch::presenting, false);
    pass(1s);
    EXPECT_TRUE(isTidy()) << "who does not want it has it no more";
}

TEST_F(PresentingTest, EndsWhatIsOutForAWhile) {
    startBroom();
    mac.changeIcon(tucked, 0, [](SimulatedIcon& icon) { icon.title = "1 new message"; });
    pass(3s);
    EXPECT_TRUE(shows("app.tucked"));
    present();
    EXPECT_TRUE(isSafe());
    velko->presenting().stop();
    pass(1s);
    EXPECT_TRUE(isTidy());
}

TEST_F(PresentingTest, ClosesTheNoteAndLetsItAskLater) {
    launch("app.new", Section::tucked);
    layout.inbox = {"app.new"};
    startBroom();
    broom->note().show();
    EXPECT_TRUE(note().isOpen());
    present();
    EXPECT_FALSE(note().isOpen());
    velko->presenting().stop();
    pass(1s);
    EXPECT_TRUE(velko->note().isAnythingToAsk() && !values().noteDeferred) << "the user has not put it off";
}

TEST_F(PresentingTest, EndsAfterItsTimeAlsoWhenTheMacSleeps) {
    layout.presentingMinutes = 60;
    startBroom();
    present();
    pass(59min);
    EXPECT_TRUE(isSafe());
    pass(1min);
    EXPECT_TRUE(isTidy());
    EXPECT_TRUE(logged("[reveal] the time for presenting is over"));
    present();
    mac.session.sleepAndWake(59min);
    pass(5s);
    EXPECT_TRUE(isSafe()) << "it is kept over sleep";
    mac.session.sleepAndWake(2min);
    pass(5s);
    EXPECT_TRUE(isTidy());
    present();
    mac.mainThread.setDate(mac.mainThread.date() - 5h);
    pass(61min);
    EXPECT_TRUE(isTidy()) << "a clock that goes back makes it last no longer";
    present();
    velko->presenting().setMinutes(0);
    pass(3h);
    EXPECT_TRUE(isSafe());
    velko->presenting().setMinutes(120);
    EXPECT_FALSE(values().isPresenting()) << "its beginning counts";
    velko->presenting().setMinutes(1'000'000);
    EXPECT_EQ(saved().presentingMinutes, Layout::longestPresenting);
}

TEST_F(PresentingTest, FollowsWhoStaysAtOnce) {
    startBroom();
    present();
    velko->presenting().setStays("app.bar", true);
    velko->presenting().setStays("app.shared", false);
    pass(1s);
    EXPECT_TRUE(shows("app.bar") && !shows("app.shared"));
    EXPECT_EQ(saved().shareKeep, BundleIDs{"app.bar"});
    EXPECT_TRUE(logged("[settings] stays while presenting app.bar true"));
}

TEST_F(PresentingTest, GoesOnAfterARefusalAndNotAfterARestart) {
    startBroom();
    present();
    mac.framework.refusal = FrameworkError{"Test", 7, "Not today"};
    velko->presenting().setStays("app.bar", true);
    pass(1s);
    EXPECT_TRUE(values().isRefused && values().isPresenting());
    mac.framework.refusal.reset();
    velko->tryAgain();
    pass(1s);
    EXPECT_TRUE(!shows("app.tucked") && values().isPresenting());
    changes.end();
    broom.reset();
    frame.reset();
    velko->quit();
    EXPECT_TRUE(shows("app.tucked"));
    velko.reset();
    startBroom(true);
    EXPECT_TRUE(isTidy() && !values().isPresenting());
}

TEST_F(PresentingTest, HasAKeyOnlyWhileItIsOffered) {
    const KeyCombination keys = Keys::parse("control+option+p").value_or(KeyCombination());
    startBroom();
    EXPECT_EQ(velko->keys().set(HotKeyAction::presenting, keys), std::nullopt);
    mac.hotKeys.press(keys);
    pass(1s);
    EXPECT_TRUE(isSafe());
    mac.hotKeys.press(keys);
    pass(1s);
    EXPECT_TRUE(isTidy());
    velko->preferences().setSwitch(Switch::presenting, false);
    EXPECT_TRUE(mac.hotKeys.registered().empty()) << "other apps may have it";
    EXPECT_TRUE(velko->keys().keysOf(HotKeyAction::presenting)) << "it is kept for another time";
    velko->preferences().setSwitch(Switch::presenting, true);
    EXPECT_EQ(mac.hotKeys.registered().size(), 1U);
}

}  // namespace
}  // namespace velko
