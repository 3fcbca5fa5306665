#include <utility>

#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Velko/Flows/Preferences.h"
#include "tests/Velko/FacesOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

/// Two screens side by side, the right one lower. Points have their origin at the bottom left.
class HoverTest : public FacesOnMac {
 protected:
    HoverTest()
        : FacesOnMac({.displays = {SimulatedDisplays::plain(),
                                   SimulatedDisplays::plain({1920, 200}, {1280, 800})}}) {
        layout.reveal.hover = true;
        tucked = launch("com.example.tucked", Section::tucked);
    }
    void SetUp() override {
        startFaces();
        mac.pointer.moveTo(desk);
    }

    /// Moves the pointer in a straight line, and tells Velko of it every 20 ms.
    void glideTo(Point to, MainThread::Uptime time) {
        const Point from = mac.pointer.location();
        for (auto gone = 20ms; gone <= time; gone += 20ms) {
            const double way = Timing::Seconds(gone) / Timing::Seconds(time);
            mac.pointer.moveTo({.x = from.x + (to.x - from.x) * way, .y = from.y + (to.y - from.y) * way});
            pass(20ms);
        }
    }
    void moveTo(Point to, MainThread::Uptime rest) {
        mac.pointer.moveTo(to);
        pass(rest);
    }
    /// A point, measured from the middle of the broom's lower edge.
    [[nodiscard]] Point beside(double right, double down) const {
        const Rect frame = broom->chevronFrame().value();
        return {.x = frame.x + frame.width / 2 + right, .y = 1080 - frame.maxY() - down};
    }
    [[nodiscard]] Point onBroom() const { return beside(0, -10); }
    void useShelf() {
        velko->preferences().setReveal(
            {.autoTuckSeconds = 0, .otherStyle = RevealStyle::shelf, .hover = true});
    }
    [[nodiscard]] bool shelfTakesKeyboard() {
        return mac.surfaces.surface(Surfaces::Kind::shelf).opening()->takesKeyboard;
    }

    const Point desk{.x = 600, .y = 500};
    const Point farInBar{.x = 300, .y = 1070};
    ProcessID tucked = 0;
};

TEST_F(HoverTest, RevealsAfterARestOnTheBroomAndTidiesAfterLeavingTheBar) {
    moveTo(onBroom(), 299ms);
    EXPECT_FALSE(isRevealed());
    pass(1ms);
    EXPECT_TRUE(isRevealed());
    moveTo(desk, 900ms);
    moveTo(farInBar, 5s);
    EXPECT_TRUE(isRevealed()) << "the pointer came back";
    moveTo(desk, 1s);
    glideTo({.x = 900, .y = 300}, 180ms);
    pass(19ms);
    EXPECT_TRUE(isRevealed()) << "the wait began anew";
    pass(1ms);
    EXPECT_FALSE(isRevealed()) << "later moves do not put it off";
}

TEST_F(HoverTest, IgnoresAPointerThatOnlyPassesButNotOneThatSlidesAlongTheBar) {
    moveTo(beside(0, 200), 1s);
    glideTo(onBroom(), 100ms);
    glideTo(beside(0, 200), 100ms);
    pass(5s);
    EXPECT_FALSE(isRevealed());
    moveTo(onBroom(), 20ms);
    glideTo(farInBar, 200ms);
    EXPECT_FALSE(isRevealed());
    pass(80ms);
    EXPECT_TRUE(isRevealed());
}

TEST_F(HoverTest, LeavesWhatAClickHasRevealed) {
    toggle();
    glideTo(onBroom(), 100ms);
    moveTo(desk, 5s);
    EXPECT_TRUE(isRevealed());
    toggle();
    moveTo(onBroom(), 1s);
    toggle();
    toggle();
    moveTo(desk, 5s);
    EXPECT_TRUE(isRevealed()) << "the click that tidied ended what hovering had begun";
    toggle();
    useShelf();
    toggle();
    velko->closeShelf(ShelfDismissal::click);
    moveTo(onBroom(), 350ms);
    EXPECT_FALSE(isRevealed()) << "the click that closed the shelf is too near";
    toggle();
    pass(10ms);
    EXPECT_TRUE(shelfTakesKeyboard());
    moveTo(desk, 5s);
    EXPECT_TRUE(isRevealed());
}

TEST_F(HoverTest, LeavesTheBarOutWhileAMenuIsOpen) {
    moveTo(onBroom(), 1s);
    mac.openMenu(tucked);
    moveTo(desk, 5s);
    mac.closeMenu();
    pass(5s);
    EXPECT_TRUE(isRevealed()) << "nothing happens until the pointer moves";
    moveTo({.x = 10, .y = 10}, 1200ms);
    EXPECT_FALSE(isRevealed());
}

TEST_F(HoverTest, DoesNothingWhileALiveActivityIsShown) {
    const auto renderer = mac.launch({.name = "WidgetRenderer_Activities", .isApplication = false});
    pass(10s);
    mac.processes.work(renderer, 0.01);
    for (int hops = 0; hops < 200 && !values().stepsAside(); ++hops) {
        moveTo(desk, 10ms);
        moveTo(onBroom(), 200ms);
    }
    pass(1s);
    EXPECT_TRUE(values().stepsAside()) << "though it began while the pointer rested";
    glideTo(beside(2, -10), 200ms);
    pass(1s);
    EXPECT_TRUE(values().stepsAside());
}

TEST_F(HoverTest, CountsAFewPointsAroundTheBroom) {
    const double half = broom->chevronFrame().value().width / 2;
    const std::vector<std::pair<Point, bool>> points{{beside(-half - 4, -10), true},
                                                     {beside(-half - 4.5, -10), false},
                                                     {beside(half + 3.5, -10), true},
                                                     {beside(half + 4.5, -10), false},
                                                     {beside(0, 3.5), true},
                                                     {beside(0, 4.5), false},
                                                     {{.x = onBroom().x, .y = 1080}, true}};
    for (const auto& [point, isBroom] : points) {
        moveTo(point, 400ms);
        EXPECT_EQ(isRevealed(), isBroom) << point.x << ", " << point.y;
        moveTo(desk, 2s);
        EXPECT_FALSE(isRevealed());
    }
}

TEST_F(HoverTest, KnowsTheBarOfEveryScreenAndTheShelf) {
    moveTo(onBroom(), 1s);
    moveTo({.x = 2500, .y = 990}, 5s);
    EXPECT_TRUE(isRevealed());
    moveTo({.x = 2500, .y = 970}, 2s);
    EXPECT_FALSE(isRevealed());
    useShelf();
    moveTo(onBroom(), 1s);
    EXPECT_FALSE(shelfTakesKeyboard()) << "somebody may be typing";
    glideTo(beside(0, 60), 200ms);
    pass(5s);
    EXPECT_TRUE(isRevealed()) << "on the shelf";
    glideTo(beside(0, 300), 200ms);
    pass(2s);
    EXPECT_FALSE(isRevealed());
}

TEST_F(HoverTest, ListensOnlyWhileItIsSwitchedOn) {
    moveTo(onBroom(), 10ms);
    velko->preferences().setReveal({.hover = false});
    pass(5s);
    EXPECT_FALSE(isRevealed());
    EXPECT_EQ(mac.pointer.moveObservers(), 0U);
}

}  // namespace
}  // namespace velko
