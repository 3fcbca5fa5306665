#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Velko/Broom/BroomIcon.h"
#include "Velko/Flows/ShowApp.h"
#include "tests/Velko/BroomOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

constexpr auto reveal = [](AppController& velko) { velko.toggle(); };
constexpr auto peek = [](AppController& velko) { velko.handle(RevealEvent::peek("com.example.app")); };
constexpr auto showMe = [](AppController& velko) { velko.showMe().start("com.example.app"); };
constexpr auto closeShelf = [](AppController& velko) {
    velko.toggle();
    velko.closeShelf(ShelfDismissal::click);
};

/// Velko's state when the click comes.
struct Situation {
    Section section = Section::tucked;
    bool canReadLayout = true;
    bool isTrusted = true;
    bool asks = false;
    bool putOff = false;
    void (*before)(AppController&) = [](AppController&) {};
    bool noteShows = false;
};

struct ClickCase {
    const char* name;
    SimulatedClick click;
    std::string leadsTo;
    Situation given{};
};

class ClickOnBroom : public BroomOnMac, public testing::WithParamInterface<ClickCase> {
 protected:
    void arrange(const Situation& given) {
        layout.reveal.otherStyle = RevealStyle::shelf;
        launch("com.example.app", given.section);
        if (given.asks) {
            launch("com.example.new", Section::tucked);
            layout.inbox = {"com.example.new"};
        }
        mac.accessibility.setTrusted(given.isTrusted);
        write("not a layout");
        startBroom(!given.canReadLayout);
        if (given.putOff) {
            click();
            note().dismiss(Surface::Dismissal::escape);
            pass(1s);
        }
        given.before(*velko);
        if (given.noteShows) {
            broom->note().show();
        }
    }

    /// What a person sees.
    [[nodiscard]] std::string outcome() {
        if (mac.statusItem.menu() != nullptr) {
            return read(*mac.statusItem.menu()).front() == "(Debug)" ? "debug menu" : "main menu";
        }
        return values().showingMe ? "show me" : note().isOpen() ? "note" : describe(values().state);
    }
};

TEST_P(ClickOnBroom, LeadsToOneThing) {
    arrange(GetParam().given);
    click(GetParam().click);
    EXPECT_EQ(outcome(), GetParam().leadsTo);
}

constexpr SimulatedClick left{};
constexpr SimulatedClick option{.option = true};

const std::vector<ClickCase> clickCases{
    {"Reveals", left, "revealed"},
    {"RevealsBuriedToo", option, "revealed with buried"},
    {"Tidies", left, "collapsed", {.before = reveal}},
    {"RightOpensMenu", {.isRight = true}, "main menu"},
    {"ControlOpensMenu", {.control = true}, "main menu"},
    {"OptionRightDebugs", {.isRight = true, .option = true}, "debug menu"},
    {"UnreadableLayout", left, "main menu", {.canReadLayout = false}},
    {"NoPermission", option, "main menu", {.isTrusted = false}},
    {"NothingHidden", left, "main menu", {.section = Section::bar}},
    {"NothingHiddenButRevealed", left, "collapsed", {.section = Section::bar, .before = reveal}},
    {"OnlyBuried", left, "revealed", {.section = Section::buried}},
    {"Asks", left, "note", {.asks = true}},
    {"AsksNotAfterPutOff", left, "revealed", {.asks = true, .putOff = true}},
    {"AsksNotWithOption", option, "revealed with buried", {.asks = true}},
    {"AsksNotWhenRevealed", left, "collapsed", {.asks = true, .before = reveal}},
    {"AsksNotAmidPeek", left, "opening com.example.app (from collapsed)", {.asks = true, .before = peek}},
    {"ClosesTheNote", option, "collapsed", {.asks = true, .noteShows = true}},
    {"ClosedTheShelf", left, "collapsed", {.asks = true, .before = closeShelf}},
    {"EndsShowMe", left, "collapsed", {.asks = true, .before = showMe}},
    {"EndsShowMeBeforeTheNote", left, "note", {.before = showMe, .noteShows = true}},
};

INSTANTIATE_TEST_SUITE_P(Table, ClickOnBroom, testing::ValuesIn(clickCases),
                         [](const auto& row) { return row.param.name; });

class StatusItemTest : public BroomOnMac {
 protected:
    StatusItemTest() {
        launch("com.example.new", Section::tucked);
        layout.inbox = {"com.example.new"};
    }
};

TEST_F(StatusItemTest, DoesNotOpenTheNoteAgainByTheClickThatClosedIt) {
    startBroom();
    click();
    ASSERT_TRUE(note().isOpen());
    note().dismiss(Surface::Dismissal::clickOutside);
    click();
    EXPECT_FALSE(note().isOpen());
    EXPECT_EQ(values().state, RevealState::collapsed());
    pass(400ms);
    click();
    EXPECT_EQ(values().state, RevealState::revealed()) << "put off now";
    broom->note().show();
    click({.isRight = true});
    EXPECT_FALSE(note().isOpen()) << "gives way to the menu";
    broom.reset();
    ASSERT_TRUE(mac.statusItem.chooseFromMenu("1 New Icon")) << "the icon may outlive its owner";
    pass(1s);
    click();
    EXPECT_EQ(values().state, RevealState::revealed());
}

TEST_F(StatusItemTest, SaysTheMostPressingThing) {
    const ProcessID renderer = mac.launch({.name = "WidgetRenderer_Activities", .isApplication = false});
    startBroom();
    EXPECT_EQ(mac.statusItem.autosaveName(), "VelkoChevron");
    pass(10s);
    mac.processes.work(renderer, 0.01);
    pass(15s);
    const auto toolTip = [this] { return mac.statusItem.toolTip(); };
    EXPECT_EQ(toolTip(), "Velko has something to ask. Click to see.");
    click();
    note().dismiss(Surface::Dismissal::escape);
    pass(1s);
    EXPECT_EQ(toolTip(), "An iPhone Live Activity is on, so everything's out. Click to tidy anyway.");
    click();
    EXPECT_EQ(toolTip(), "Click to show tucked icons. Right-click for more.");
    click();
    EXPECT_EQ(toolTip(), "Click to tidy up");
    mac.revokeTrust();
    pass(3s);
    EXPECT_EQ(toolTip(), "Velko needs attention. Right-click for details.");
    EXPECT_EQ(mac.statusItem.image(),
              (StatusItem::Image{StatusItem::Symbol{"exclamationmark.triangle", "Velko"}}));
    mac.grantTrust();
    pass(5s);
    EXPECT_EQ(toolTip(), "Click to tidy up");
    EXPECT_EQ(mac.statusItem.image(),
              (StatusItem::Image{BroomDrawing::icon({.tilt = Timing::broomRockDegrees, .hasDot = true})}));
}

}  // namespace
}  // namespace velko
