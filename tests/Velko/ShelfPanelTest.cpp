#include <gmock/gmock.h>

#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Flows/Preferences.h"
#include "tests/Velko/FacesOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class ShelfPanelTest : public FacesOnMac {
 protected:
    ShelfPanelTest() : FacesOnMac({.displays = {SimulatedDisplays::notched()}}) {}

    [[nodiscard]] std::vector<std::string> read() const { return reading(*surface.content()); }
    /// What is in it, without what is always there.
    [[nodiscard]] std::vector<std::string> readApps() const {
        std::vector<std::string> lines = read();
        std::erase_if(lines, [](const std::string& line) {
            return line == "Keep the shelf open" || line == "Find an app" || line == "Menu Bar" ||
                   line == "Drop an app here to keep it in the bar.";
        });
        return lines;
    }
    [[nodiscard]] std::vector<std::string> menuTitles(const std::string& id) const {
        std::vector<std::string> titles;
        for (const auto& item : view::menuOf(*surface.content(), id)) {
            titles.push_back(item.title);
        }
        return titles;
    }
    void choose(const std::string& id, std::size_t index) {
        EXPECT_TRUE(view::choose(view::menuOf(*surface.content(), id), {index}));
        pass(1s);
    }

    SimulatedSurface& surface = mac.surfaces.surface(Surfaces::Kind::shelf);
};

TEST_F(ShelfPanelTest, ShowsEachTuckedAppThatIsPresentEightToARow) {
    for (const char letter : {'i', 'h', 'g', 'f', 'e', 'd', 'c', 'b', 'a'}) {
        mac.addIcon(launch(std::string("app.") + letter, Section::tucked), {.title = "second"});
    }
    launch("app.bar", Section::bar);
    launch("app.buried", Section::buried);
    layout.place("app.absent", Section::tucked);
    startFaces();
    EXPECT_FALSE(surface.isOpen());
    toggle();
    EXPECT_THAT(readApps(), ElementsAre("Tucked apps", "app.a", "app.b", "app.c", "app.d", "app.e", "app.f",
                                        "app.g", "app.h", "app.i"));
    EXPECT_EQ(view::childrenOf(*view::find(*surface.content(), "row:tucked:1")).size(), 8U);
    EXPECT_EQ(view::childrenOf(*view::find(*surface.content(), "row:tucked:2")).size(), 1U);
    toggle();
    EXPECT_FALSE(surface.isOpen());
}

TEST_F(ShelfPanelTest, OpensAnAppAndStaysBelowItsMenu) {
    const ProcessID app = launch("app.a", Section::tucked);
    startFaces();
    toggle();
    EXPECT_TRUE(surface.perform("tile:app.a"));
    pass(1s);
    EXPECT_EQ(mac.windows.menuOwner(), app);
    mac.surfaces.clickOutside();
    surface.dismiss(Surface::Dismissal::escape);
    EXPECT_TRUE(surface.isOpen()) << "the click was for the menu";
    mac.closeMenu();
    pass(1s);
    mac.surfaces.clickOutside();
    EXPECT_FALSE(surface.isOpen());
    EXPECT_TRUE(velko->consumesClick()) << "should it have been on the broom";
    EXPECT_FALSE(isRevealed());
    toggle();
    EXPECT_TRUE(surface.press({.key = view::Shortcut::Key::escape}));
    EXPECT_FALSE(surface.isOpen());
    EXPECT_FALSE(velko->consumesClick());
}

TEST_F(ShelfPanelTest, SaysWithinHalfASecondThatAnAppDoesNotAnswer) {
    const ProcessID app = launchNamed("app.a", "Übersicht");
    layout.place("app.a", Section::tucked);
    startFaces();
    const SimulatedSurface& panel = mac.surfaces.surface(Surfaces::Kind::message);
    const std::string words =
        "\u2068Übersicht\u2069 isn't answering, so its menu stays closed. "
        "Try again in a moment.";
    mac.hang(app, true);
    velko->open("app.a");  // as the broom's menu does
    pass(500ms);
    EXPECT_THAT(reading(*panel.content()), testing::Contains(words));
    EXPECT_FALSE(surface.isOpen());
    pass(6s);
    EXPECT_FALSE(panel.isOpen()) << "it goes by itself";
    toggle();
    EXPECT_TRUE(surface.perform("tile:app.a"));
    pass(500ms);
    EXPECT_THAT(read(), testing::Contains(words));
    EXPECT_FALSE(panel.isOpen()) << "once is enough";
    EXPECT_EQ(mac.surfaces.announcements(), std::vector<std::string>(2, words));
    mac.hang(app, false);
    EXPECT_TRUE(surface.perform("tile:app.a"));
    pass(100ms);
    EXPECT_THAT(read(), testing::Not(testing::Contains(words))) << "a new try";
    pass(200ms);
    mac.closeMenu();
    pass(100ms);
    mac.quit(app);
    velko->open("app.a");
    pass(10ms);
    EXPECT_EQ(mac.surfaces.announcements().back(), "\u2068Übersicht\u2069 isn't running any more.");
}

TEST_F(ShelfPanelTest, MovesAppsByTheirMenus) {
    launch("app.a", Section::tucked);
    launch("app.b", Section::buried);
    layout.seenApps = BundleIDs{"app.a", "app.b"};
    launch("app.new");
    startFaces();
    toggle(true);
    EXPECT_THAT(readApps(),
                ElementsAre("Tucked and buried apps", "Tucked", "app.new, New", "app.a", "Buried", "app.b"));
    EXPECT_THAT(menuTitles("tile:app.a"), ElementsAre("Open", "Show Me", "", "Keep in the Bar", "Bury"));
    EXPECT_THAT(menuTitles("tile:app.b"), ElementsAre("Open", "Show Me", "", "Keep in the Bar", "Tuck"));
    choose("tile:app.new", 1);
    EXPECT_EQ(values().showingMe, "app.new");
    choose("tile:app.new", 4);
    EXPECT_TRUE(logged("[layout] app.new -> tucked (new icon answered)")) << "it may stay where it is";
    choose("tile:app.new", 3);
    EXPECT_TRUE(logged("[layout] app.new -> bar"));
    choose("tile:app.b", 0);
    EXPECT_TRUE(logged("[open] open app.b: press ok"));
    EXPECT_THAT(readApps(), ElementsAre("Tucked and buried apps", "Tucked", "app.a", "Buried", "app.b"));
}

TEST_F(ShelfPanelTest, MovesAppsByKeysAndByDraggingToTheBar) {
    launch("app.a", Section::tucked);
    launch("app.b", Section::tucked);
    startFaces();
    toggle(true);
    const auto press = [&](const std::string& tile, char key) {
        const bool isHeard = surface.perform(tile, view::MenuKey{.key = key});
        pass(1s);
        return isHeard;
    };
    EXPECT_FALSE(press("tile:app.a", '2')) << "there it is";
    EXPECT_TRUE(press("tile:app.a", '3'));
    EXPECT_EQ(saved().section("app.a"), Section::buried);
    EXPECT_TRUE(press("tile:app.a", '1'));
    EXPECT_EQ(saved().section("app.a"), Section::bar);
    EXPECT_FALSE(press("tile:app.b", 0)) << "most items have no key";
    EXPECT_TRUE(surface.perform("group:bar", BundleID("app.b")));
    EXPECT_EQ(saved().section("app.b"), Section::bar);
}

TEST_F(ShelfPanelTest, FindsAppsByWhatIsTyped) {
    for (const char* const name :
         {"Übersicht", "Dropbox", "OneDrive", "Google Drive", "Zoom", "VPN", "Notes", "Mail", "Clock"}) {
        layout.place(std::string("app.") + name, Section::tucked);
        launchNamed(std::string("app.") + name, name);
    }
    startFaces();
    toggle();
    EXPECT_TRUE(surface.perform("find", std::string("dri")));
    EXPECT_THAT(readApps(), testing::UnorderedElementsAre("Tucked apps", "OneDrive", "Google Drive"));
    EXPECT_TRUE(surface.perform("find", std::string("uber")));
    EXPECT_THAT(readApps(), ElementsAre("Tucked apps", "Übersicht"));
    EXPECT_TRUE(surface.perform("find", view::KeyPress{.key = view::KeyPress::Key::enter}));
    pass(1s);
    EXPECT_TRUE(logged("[open] open app.Übersicht: press ok"));
    mac.closeMenu();
    pass(1s);
    EXPECT_TRUE(surface.perform("find", std::string("xyz")));
    pass(600ms);
    EXPECT_EQ(mac.surfaces.announcements().back(), "No results");
    EXPECT_THAT(readApps(), ElementsAre("Tucked apps", "No app here has that name."));
    EXPECT_FALSE(surface.perform("find", view::KeyPress{.key = view::KeyPress::Key::enter}));
    toggle();
    toggle();
    EXPECT_EQ(readApps().size(), 10U) << "it begins anew each time";
}

TEST_F(ShelfPanelTest, StaysWhileItIsPinned) {
    launch("app.a", Section::tucked);
    layout.reveal.autoTuckSeconds = 5;
    startFaces();
    toggle();
    EXPECT_TRUE(surface.perform("pin"));
    pass(1h);
    mac.surfaces.clickOutside();
    EXPECT_TRUE(surface.isOpen());
    EXPECT_THAT(read(), testing::Contains("Let the shelf close by itself"));
    EXPECT_TRUE(surface.perform("pin"));
    pass(4s);
    EXPECT_TRUE(surface.isOpen());
    pass(2s);
    EXPECT_FALSE(surface.isOpen()) << "its time began when it was let go";
    toggle();
    EXPECT_TRUE(surface.perform("pin"));
    toggle();
    EXPECT_FALSE(surface.isOpen()) << "the broom closes it all the same";
    toggle();
    mac.surfaces.clickOutside();
    EXPECT_FALSE(surface.isOpen()) << "the next time it is not pinned";
}

TEST_F(ShelfPanelTest, TakesAppsThatAreDraggedToTheOtherGroup) {
    launch("app.a", Section::tucked);
    launch("app.b", Section::tucked);
    startFaces();
    toggle();
    EXPECT_FALSE(surface.perform("group:tucked", BundleID("app.a"))) << "there is nowhere else";
    toggle(true);
    EXPECT_THAT(read(), testing::Contains("Drop an app here to bury it."));
    for (int times = 0; times < 2; ++times) {
        EXPECT_TRUE(surface.perform("group:buried", BundleID("app.a")));
        pass(1s);
    }
    EXPECT_EQ(timesLogged("[layout] app.a -> buried"), 1) << "the second time it was there";
    EXPECT_THAT(readApps(), ElementsAre("Tucked and buried apps", "Tucked", "app.b", "Buried", "app.a"));
    EXPECT_TRUE(surface.perform("group:tucked", BundleID("app.a")));
    EXPECT_EQ(saved().section("app.a"), Section::tucked);
}

TEST_F(ShelfPanelTest, SaysWhyItIsEmpty) {
    const ProcessID app = launch("app.a", Section::tucked);
    launch("app.b", Section::bar);
    startFaces();
    toggle();
    mac.quit(app);
    pass(1s);
    EXPECT_EQ(read().back(), "None of your tucked apps is running.");
    velko->place("app.a", Section::bar);
    pass(1s);
    EXPECT_THAT(read(), ElementsAre("Tucked apps",
                                    "Nothing is tucked yet. You can choose what to tuck in the settings.",
                                    "Open Settings"));
    EXPECT_TRUE(surface.perform("open-settings"));
    EXPECT_EQ(host.settings, 1);
    velko->place("app.b", Section::buried);
    pass(1s);
    EXPECT_THAT(read(),
                ElementsAre("Tucked apps", "Nothing is tucked, but some apps are buried.", "Show Buried"));
    EXPECT_TRUE(surface.perform("show-buried"));
    pass(1s);
    EXPECT_THAT(read(), testing::Contains("app.b"));
    velko->place("app.b", Section::bar);
    mac.revokeTrust();
    pass(10s);
    EXPECT_EQ(read().back(), "Everything is out in the menu bar for now.");
}

TEST_F(ShelfPanelTest, GoesAndComesWithTheDisplays) {
    startFaces();
    int moves = 0;
    const Subscription place = broom->observe([&] { ++moves; });
    toggle();
    const auto displays = mac.displays.displays();
    mac.setDisplays({});  // while the broom's frame stays the same
    pass(100ms);
    EXPECT_FALSE(surface.isOpen());
    EXPECT_EQ(moves, 1) << "there is no bar that could hold the broom";
    mac.setDisplays(displays);
    pass(100ms);
    EXPECT_TRUE(surface.isOpen());
}

TEST_F(ShelfPanelTest, HangsBelowTheBroomOfWhateverScreenHoldsIt) {
    startFaces();
    toggle();
    EXPECT_EQ(surface.opening()->place->anchor.x, broom->chevronFrame()->x);
    EXPECT_EQ(surface.frame()->maxY(), 982 - 38 - 4);
    EXPECT_EQ(surface.opening()->motion,
              (Surface::Motion{.springResponse = Timing::Seconds(0.42), .springDamping = 0.72}));
    const Rect before = *broom->chevronFrame();
    mac.iconElement(mac.processes.ownPID(), 0)->attributes["AXPosition"] = Point{.x = 400, .y = 0};
    broom->refresh();
    pass(1s);
    EXPECT_EQ(surface.opening()->place->anchor.x, 400) << "it follows the broom";
    mac.setDisplays({SimulatedDisplays::plain()});
    pass(2s);
    EXPECT_EQ(broom->chevronFrame()->x, before.x + 1920 - 1512);
    EXPECT_EQ(surface.opening()->place->anchor.x, broom->chevronFrame()->x);
    toggle();
    mac.surfaces.reducedMotion = true;
    velko->preferences().setReveal({.autoTuckSeconds = 0, .otherStyle = RevealStyle::shelf});
    toggle();
    EXPECT_EQ(surface.opening()->motion, (Surface::Motion{.fade = Timing::Seconds(0.15)}));

    const std::vector<Display> displays{SimulatedDisplays::plain(),
                                        SimulatedDisplays::plain({1920, 200}, {1280, 800})};
    const auto onRight =
        placeBelowBroom(Rect{.x = 3000, .y = 80, .width = 30, .height = 24}, displays, 24, 4);
    EXPECT_EQ(onRight->anchor, (Rect{.x = 3000, .y = 972, .width = 30, .height = 28}));
    EXPECT_EQ(onRight->bounds, (Rect{.x = 1928, .y = 278, .width = 1264, .height = 694}));
    EXPECT_EQ(placeBelowBroom({}, displays, 24, 4)->anchor,
              (Rect{.x = 1920, .y = 1052, .width = 0, .height = 28}));
    EXPECT_FALSE(placeBelowBroom({}, {}, 24, 4)) << "no screen, no shelf";
}

}  // namespace
}  // namespace velko
