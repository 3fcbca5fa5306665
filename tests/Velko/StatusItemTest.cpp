#include <algorithm>
#include <set>
#include <utility>
#include <variant>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Broom/BroomIcon.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "VelkoCore/Time/Timing.h"
#include "tests/Dice.h"
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
    pass(11s);
    EXPECT_EQ(toolTip(), "Velko needs attention. Right-click for details.");
    EXPECT_EQ(mac.statusItem.image(),
              (StatusItem::Image{StatusItem::Symbol{"exclamationmark.triangle", "Velko"}}));
    mac.grantTrust();
    pass(5s);
    EXPECT_EQ(toolTip(), "Click to tidy up");
    EXPECT_EQ(mac.statusItem.image(),
              (StatusItem::Image{BroomDrawing::icon({.tilt = Timing::broomRockDegrees, .hasDot = true})}));
}

/// Newcomers, offers, answers and what was put off, in any order over days. What a click on the broom does is
/// told a second time.
class QuestionsInAnyOrder : public BroomOnMac, public testing::WithParamInterface<unsigned> {
 protected:
    using Keys = std::set<std::pair<BundleID, std::size_t>>;

    void SetUp() override {
        const Date today = floorToSeconds(mac.mainThread.date());
        layout.autopilot.watchingSince = today - std::chrono::days(20);
        layout.popOutOnChange = false;
        layout.lastClicked["app.tucked"] = today;
        launch("app.tucked", Section::tucked);
        layout.seenApps = BundleIDs{"app.tucked"};
        for (int number = 0; number < 4; ++number) {
            const BundleID app = "app.idle" + std::to_string(number);
            layout.seenApps->insert(app);
            layout.lastClicked[app] = today - std::chrono::days(14 - 2 * number);
            launch(app, Section::bar);
        }
        startBroom();
    }

    /// What is suggested, app by app.
    [[nodiscard]] Keys suggested() {
        Keys keys;
        for (const TidySuggestion& suggestion : velko->autopilot().suggestions()) {
            const auto* const move = std::get_if<TidySuggestion::MoveTo>(&suggestion.change);
            keys.emplace(suggestion.bundleID, move == nullptr ? 3U : static_cast<std::size_t>(move->section));
        }
        return keys;
    }
    [[nodiscard]] bool asks() { return waiting > 0 || (isOffered && !suggested().empty()); }

    void come() {
        launch("app.new" + std::to_string(came++));
        ++waiting;
        isPutOff = false;
    }
    void answer() {
        const auto& inbox = values().layout.inbox;
        const auto suggestions = velko->autopilot().suggestions();
        if (!inbox.empty() && (suggestions.empty() || dice.isOneIn(2))) {
            velko->place(BundleID(dice.oneOf(inbox)), dice.oneOf(allSections));
            --waiting;
        } else if (!suggestions.empty()) {
            const TidySuggestion& suggestion = dice.oneOf(suggestions);
            switch (dice.roll(3)) {
                case 0: velko->autopilot().accept(suggestion); break;
                case 1: velko->autopilot().dismiss(suggestion.bundleID); break;
                default: velko->autopilot().alwaysKeep(suggestion.bundleID); break;
            }
        }
        isOffered = isOffered && !suggested().empty();
        // The note goes on as long as it holds suggestions, also those that nobody has offered yet.
        if (isNoteOpen && waiting == 0 && suggested().empty()) {
            closed();
        }
    }
    void closed() {
        isNoteOpen = false;
        isPutOff = asks();
        putOff = suggested();
    }
    void clickOn(bool withOption) {
        const int most = withOption ? 2 : 1;
        if (isNoteOpen) {
            closed();
        } else if (asks() && !isPutOff && out == 0 && !withOption) {
            isNoteOpen = true;
        } else {
            out = withOption ? (out == 2 ? 0 : most) : (out > 0 ? 0 : most);
        }
        click({.option = withOption});
    }
    void escape() {
        if (isNoteOpen) {
            note().dismiss(Surface::Dismissal::escape);
            closed();
        }
    }
    void rest(MainThread::Uptime duration) {
        const auto hoursBefore = mac.mainThread.now() / 1h;
        pass(duration);
        if (mac.mainThread.now() / 1h == hoursBefore) {
            return;
        }
        const bool isNewOffer = timesLogged("[autopilot] offering ") > offers;
        offers = timesLogged("[autopilot] offering ");
        isOffered = isNewOffer || (isOffered && !suggested().empty());
        if (isNewOffer || !std::ranges::includes(putOff, suggested())) {
            isPutOff = false;
        }
    }

    void happen() {
        switch (dice.roll(12)) {
            case 0:
            case 1: come(); break;
            case 2:
            case 3: answer(); break;
            case 4: rest(1h); break;
            case 5:
            case 6:
                mac.mainThread.setDate(mac.mainThread.date() + std::chrono::days(1));
                rest(1h);
                break;
            case 7: escape(); break;
            case 8: clickOn(true); break;
            default: clickOn(false); break;
        }
        rest(2s);
    }
    void check() {
        EXPECT_EQ(values().layout.inbox.size(), waiting);
        EXPECT_EQ(velko->note().isAnythingToAsk(), asks());
        EXPECT_EQ(values().noteDeferred, isPutOff);
        EXPECT_EQ(note().isOpen(), isNoteOpen);
        EXPECT_EQ(values().state, out == 0   ? RevealState::collapsed()
                                  : out == 1 ? RevealState::revealed()
                                             : RevealState::revealedWithBuried());
        EXPECT_EQ(mac.statusItem.toolTip() == "Velko has something to ask. Click to see.",
                  asks() && !isPutOff);
    }

    Dice dice{GetParam()};
    std::size_t came = 0;
    std::size_t waiting = 0;
    bool isOffered = false;
    int offers = 0;
    bool isNoteOpen = false;
    bool isPutOff = false;
    Keys putOff;  ///< what the note held when it was last closed
    int out = 0;  ///< 1: what is tucked; 2: what is buried too
};

TEST_P(QuestionsInAnyOrder, AreAskedUntilTheyArePutOffAndAgainWhenThereIsNews) {
    for (int step = 0; step < 80 && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step) + "\n" + std::string(log.lines().back()));
        happen();
        check();
    }
    EXPECT_GT(offers, 0);
}

INSTANTIATE_TEST_SUITE_P(Seed, QuestionsInAnyOrder, testing::Range(1U, 9U));

}  // namespace
}  // namespace velko
