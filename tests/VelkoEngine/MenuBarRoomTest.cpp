#include <gtest/gtest.h>

#include "Simulator/Desktop/SimulatedScreen.h"
#include "VelkoEngine/MenuBar/MenuBarRoom.h"

namespace velko {
namespace {

using MenuBarRoom::Bar;
using MenuBarRoom::Widths;

MenuBarItem iconAt(double x, double width, const BundleID& app) {
    MenuBarItem item;
    item.bundleID = app;
    item.frame = {.x = x, .width = width, .height = 24};
    return item;
}

Display notchedWithoutAreas() {
    Display display = SimulatedDisplays::notched();
    display.auxiliaryTopLeft = {};
    display.auxiliaryTopRight = {};
    return display;
}

TEST(MenuBarRoom, IsWhatTheNotchOrTheMenusLeave) {
    struct Case {
        const char* what;
        Display display;
        std::optional<double> menusEnd;
        double room;
    };
    const std::vector<Case> cases{
        {"menus unknown", SimulatedDisplays::plain({}, {1200, 800}), {}, 800},
        {"short menus", SimulatedDisplays::plain({}, {1200, 800}), 200, 1000},
        {"long menus", SimulatedDisplays::plain({}, {1200, 800}), 1000, 200},
        {"second display", SimulatedDisplays::plain({1200, 0}, {1200, 800}), {}, 800},
        {"menus in another bar", SimulatedDisplays::plain({1200, 0}, {1200, 800}), 300, 800},
        {"beside the notch", SimulatedDisplays::notched(), {}, 662},
        {"menus left of the notch", SimulatedDisplays::notched(), 600, 662},
        {"menus beyond the notch", SimulatedDisplays::notched(), 1000, 512},
        {"a notch of which nobody knows how wide it is", notchedWithoutAreas(), {}, 756},
        {"menus beyond its middle", notchedWithoutAreas(), 1012, 500},
    };
    for (const Case& each : cases) {
        const std::vector<Display> displays{each.display};
        const Bar bar{.displays = displays,
                      .display = displays.front(),
                      .items = {},
                      .widths = {},
                      .menusEnd = each.menusEnd};
        EXPECT_DOUBLE_EQ(MenuBarRoom::need(bar, VisibilityPlan::showAll()).room, each.room) << each.what;
    }
}

TEST(MenuBarRoom, IsNeededByAllThatShowsAndByNothingThatNobodyKnows) {
    const std::vector<Display> displays{SimulatedDisplays::plain({}, {1200, 800}),
                                        SimulatedDisplays::plain({-1200, 0}, {1200, 800})};
    const std::string host = "com.apple.MenuBarAgent";
    const std::vector<MenuBarItem> everyIcon{iconAt(1000, 200, host), iconAt(940, 30, "a"),
                                             iconAt(910, 30, "b")};
    const Widths widths{{host, 200}, {"a", 30}, {"b", 30}, {"unknown", 0}};
    const Widths withoutHost{{"a", 30}, {"b", 30}};
    const std::vector<MenuBarItem> withoutSystem{everyIcon.begin() + 1, everyIcon.end()};
    const std::vector<MenuBarItem> elsewhere{iconAt(-100, 30, "a"), iconAt(-70, 30, "b")};
    const Rect ownFrame{.x = 970, .width = 30, .height = 24};
    const auto planOfA = VisibilityPlan::allow({"a"});
    struct Case {
        const char* what;
        const std::vector<MenuBarItem>& items;
        const Widths& widths;
        std::optional<Rect> ownIcon;
        VisibilityPlan plan;
        double needed;
    };
    for (const Case& each : std::vector<Case>{
             {"everything", everyIcon, widths, ownFrame, VisibilityPlan::showAll(), 290},
             {"less is out", everyIcon, widths, ownFrame, planOfA, 260},
             {"the broom is nowhere", everyIcon, widths, {}, planOfA, 230},
             {"what is right of all icons is the system's", withoutSystem, withoutHost, ownFrame, planOfA,
              260},
             {"right of the apps' icons", withoutSystem, withoutHost, {}, planOfA, 260},
             {"the bar of another display says nothing", elsewhere, withoutHost, {}, planOfA, 30},
             {"nobody is known", {}, {}, {}, planOfA, 0},
         }) {
        const Bar bar{.displays = displays,
                      .display = displays.front(),
                      .items = each.items,
                      .widths = each.widths,
                      .broom = each.ownIcon};
        EXPECT_DOUBLE_EQ(MenuBarRoom::need(bar, each.plan).needed, each.needed) << each.what;
    }
    EXPECT_TRUE((MenuBarRoom::Need{.needed = 800, .room = 800}.fits()));
    EXPECT_FALSE((MenuBarRoom::Need{.needed = 800.5, .room = 800}.fits()));
}

TEST(MenuBarRoom, RemembersWidthsOfIconsThatDoNotTellThem) {
    Widths widths = MenuBarRoom::updated({}, {iconAt(0, 20, "a"), iconAt(20, 25, "a"), iconAt(0, 0, "b")});
    EXPECT_EQ(widths, (Widths{{"a", 45}, {"b", 0}}));
    widths = MenuBarRoom::updated(widths, {iconAt(0, 0, "a"), iconAt(0, 30, "b"), iconAt(0, -4, "c")});
    EXPECT_EQ(widths, (Widths{{"a", 45}, {"b", 30}, {"c", 0}}));
    EXPECT_EQ(MenuBarRoom::updated(widths, {iconAt(0, 22, "b")}), (Widths{{"b", 22}}));
}

TEST(MenuBarRoom, IsMissingForIconsThatShouldShowAndCannotBeSeen) {
    const std::vector<Display> displays{SimulatedDisplays::notched()};
    const std::vector<MenuBarItem> items{
        iconAt(1000, 24, "seen"),  iconAt(740, 24, "under"),   iconAt(740, 24, "hidden"),
        iconAt(-1, 24, "nowhere"), iconAt(740, 0, "sizeless"), iconAt(740, 24, "com.apple.MenuBarAgent")};
    EXPECT_EQ(MenuBarRoom::withoutPlace(displays, 38, items,
                                        VisibilityPlan::allow({"seen", "under", "nowhere", "sizeless"})),
              (BundleIDs{"under", "nowhere"}));
    EXPECT_TRUE(MenuBarRoom::withoutPlace({}, 24, items, VisibilityPlan::showAll()).empty());
}

}  // namespace
}  // namespace velko
