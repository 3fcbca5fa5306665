#include <numeric>
#include <string>

#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/View/Tree.h"
#include "tests/Velko/FacesOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

constexpr double iconWidth = 26;

struct Story {
    double width;  ///< of the display
    bool isNotched;
    int icons;  ///< one in four belongs to the bar, one in four is buried
};

/// Icons brought out on displays of many sizes. All of them are meant to come out in the bar.
class RoomForIcons : public FacesOnMac, public testing::WithParamInterface<Story> {
 protected:
    RoomForIcons() : FacesOnMac({.displays = {displayOf(GetParam())}}) {
        layout.reveal.notchedStyle = RevealStyle::inline_;
        layout.reveal.otherStyle = RevealStyle::inline_;
        constexpr std::array sections{Section::bar, Section::tucked, Section::tucked, Section::buried};
        for (int i = 0; i < GetParam().icons; ++i) {
            const BundleID app = "app." + std::to_string(i);
            const Section section = sections.at(static_cast<std::size_t>(i) % sections.size());
            layout.place(app, section);
            mac.launch({.bundleID = app, .name = app, .icons = {{.title = app, .width = iconWidth}}});
        }
    }

    static Display displayOf(const Story& story) {
        const Size size{.width = story.width, .height = story.width * 0.6};
        return story.isNotched ? SimulatedDisplays::notched({}, size) : SimulatedDisplays::plain({}, size);
    }
    /// What Velko may count on: beside the notch, or two thirds.
    static double room() {
        const double width = GetParam().width;
        return GetParam().isNotched ? (width - SimulatedDisplays::housingWidth) / 2 : width - width / 3;
    }
    /// All that shows when so many apps do, the broom and the system's items too.
    [[nodiscard]] double needed(int apps) const {
        const auto& slots = mac.menuBar().slots();
        return std::accumulate(
            slots.begin(), slots.end(), apps * iconWidth, [](double sum, const SimulatedMenuBar::Slot& slot) {
                return sum + (slot.bundleID.starts_with("app.") && slot.bundleID != "app.velko.mac"
                                  ? 0
                                  : slot.icon.width);
            });
    }
    [[nodiscard]] bool isAnySwallowed() const {
        return std::ranges::any_of(mac.menuBar().slots(), &SimulatedMenuBar::Slot::isSwallowed);
    }
    static int out(bool withBuried) {
        const int icons = GetParam().icons;
        int count = 0;
        for (int i = 0; i < icons; ++i) {
            count += withBuried || i % 4 != 3 ? 1 : 0;
        }
        return count;
    }
    void expectReveal(bool withBuried) {
        const bool fits = needed(out(withBuried)) <= room();
        EXPECT_EQ(values().activeStyle, fits ? RevealStyle::inline_ : RevealStyle::shelf);
        EXPECT_EQ(values().isShelfShown(), !fits);
        EXPECT_EQ(shelf != nullptr && mac.surfaces.surface(Surfaces::Kind::shelf).opening() != nullptr,
                  !fits);
        const bool isFull = needed((GetParam().icons + 3) / 4) > room();  // with what is always out
        EXPECT_TRUE(isFull || !isAnySwallowed()) << "an icon came out without room";
        EXPECT_EQ(shows("app.1"), fits) << "a tucked one";
        expectSettled();
    }
};

TEST_P(RoomForIcons, DecidesWhereTheyComeOutEachTimeAnew) {
    startFaces();
    toggle();
    expectReveal(false);
    toggle(true);  // now the buried ones too
    expectReveal(true);
    toggle(true);
    EXPECT_FALSE(values().isShelfShown());
    const bool hasRoom = needed(out(true)) <= room();
    EXPECT_EQ(logged("[reveal] the bar has room for "), !hasRoom);
    velko->preferences().setSwitch(Switch::shelfWhenFull, false);
    toggle(true);
    EXPECT_EQ(values().activeStyle, RevealStyle::inline_) << "the user wants them in the bar";
    EXPECT_TRUE(!GetParam().isNotched || isAnySwallowed() == !hasRoom);
}

TEST_P(RoomForIcons, IsAskedForOnceAndMakesNoAppAnswer) {
    startFaces();
    const auto messages = mac.cost().accessibilityMessages;
    velko->toggle();
    EXPECT_LE(mac.cost().accessibilityMessages - messages, 6U)
        << "only Velko's own icon is asked for its place";
}

/// The menus of the front app, beside which icons have to fit.
class RoomBesideMenus : public FacesOnMac {
 protected:
    RoomBesideMenus() : FacesOnMac({.displays = {SimulatedDisplays::plain({}, {1200, 800})}}) {
        editor = mac.launch({.bundleID = "com.example.editor", .name = "Editor", .isRegular = true});
    }

    /// Icons of that width altogether. With the broom and the system's items they need 272 more.
    void startWith(double width, Section section = Section::tucked) {
        layout.place("app.wide", section);
        mac.launch({.bundleID = "app.wide", .name = "Wide", .icons = {{.title = "W", .width = width}}});
        startFaces();
    }
    /// The messages that the front app got when it came to the front.
    std::uint64_t activate(double menus) {
        const auto before = mac.cost().accessibilityMessages;
        mac.activate(editor, menus);
        mac.advance(10ms);
        return mac.cost().accessibilityMessages - before;
    }
    bool revealsInBar() {
        toggle();
        const bool isInBar = values().activeStyle == RevealStyle::inline_;
        toggle();
        return isInBar;
    }

    ProcessID editor = 0;
};

TEST_F(RoomBesideMenus, IsMeasuredWhereManyIconsMakeItMatter) {
    startWith(600);
    EXPECT_FALSE(revealsInBar()) << "nobody knows the menus: a third counts as theirs";
    EXPECT_LE(activate(200), 3U);
    EXPECT_TRUE(revealsInBar()) << "short menus leave room";
    activate(400);
    EXPECT_FALSE(revealsInBar());
    activate(200);
    mac.hang(editor, true);
    activate(200);
    pass(1s);
    EXPECT_FALSE(revealsInBar()) << "it does not answer";
    mac.hang(editor, false);
    mac.setDisplays({SimulatedDisplays::plain({}, {1201, 800})});
    pass(3s);
    EXPECT_TRUE(revealsInBar()) << "asked again after a change of displays";
}

TEST_F(RoomBesideMenus, IsNotMeasuredWhereFewIconsAlwaysFit) {
    startWith(60);
    EXPECT_EQ(activate(900), 0U);
    EXPECT_TRUE(revealsInBar());
}

TEST_F(RoomBesideMenus, IsNotMissedWhereRevealingBringsNothingOut) {
    layout.place("app.away", Section::tucked);
    startWith(900, Section::bar);
    EXPECT_TRUE(revealsInBar()) << "the shelf would hold none of those that have no room";
    mac.launch({.bundleID = "app.away", .name = "Away", .icons = {{.title = "A", .width = iconWidth}}});
    pass(20s);
    EXPECT_FALSE(revealsInBar());
}

std::vector<Story> stories() {
    std::vector<Story> all;
    for (const double width : {1280.0, 1512.0, 1728.0, 1920.0, 2560.0, 3840.0}) {
        for (const int icons : {5, 12, 20, 35, 60}) {
            all.push_back({.width = width, .isNotched = false, .icons = icons});
            all.push_back({.width = width, .isNotched = true, .icons = icons});
        }
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(Displays, RoomForIcons, testing::ValuesIn(stories()), [](const auto& story) {
    const Story& told = story.param;
    return std::to_string(static_cast<int>(told.width)) + (told.isNotched ? "Notched" : "Plain") +
           std::to_string(told.icons);
});

}  // namespace
}  // namespace velko
