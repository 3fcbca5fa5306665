#include <array>
#include <gmock/gmock.h>

#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Flows/Questions.h"
#include "tests/Velko/FacesOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;

/// Twenty days after Velko began to watch clicks. "Dusty" stands in the bar and is never clicked; "Handy"
/// and "Hog" do not run yet.
class NoteTest : public FacesOnMac {
 protected:
    using Key = view::Shortcut::Key;

    NoteTest() : FacesOnMac({}) {
        layout.seenApps = BundleIDs{"app.dusty", "app.handy", "app.hog"};
        layout.place("app.handy", Section::buried);
        const Date now = floorToSeconds(mac.mainThread.date());
        layout.autopilot.watchingSince = now - std::chrono::days(20);
        for (int day = 1; day <= 3; ++day) {
            layout.recordClick("app.handy", now - std::chrono::days(day), {});
        }
        launchNamed("app.dusty", "Dusty");
    }
    void SetUp() override { startFaces(); }

    void keepDusty() { velko->autopilot().alwaysKeep("app.dusty"); }
    void press(std::string_view id) {
        EXPECT_TRUE(surface.perform(id)) << id;
        pass(200ms);
    }
    [[nodiscard]] std::vector<std::string> read() const { return reading(*surface.content()); }

    const std::vector<std::string> spotless{"Spotless. Nothing to sort.", "Done"};
    SimulatedSurface& surface = mac.surfaces.surface(Surfaces::Kind::note);
};

TEST_F(NoteTest, SaysThatEverythingIsSpotlessAndStaysUntilTheUserIsDone) {
    keepDusty();
    note->show();
    EXPECT_TRUE(logged("[note] shown: 0 new, 0 suggestions"));
    EXPECT_GT(surface.opening()->motion.fade, Timing::Seconds::zero());
    EXPECT_EQ(read(), spotless);
    pass(60s);
    launchNamed("app.cloud", "Cloud");
    press("tuck:app.cloud");
    EXPECT_EQ(read(), spotless);
    pass(2s);
    EXPECT_FALSE(note->isShowing()) << "it has asked something since";
    note->show();
    EXPECT_TRUE(surface.press({.key = Key::enter}));
    EXPECT_FALSE(note->isShowing());
    mac.surfaces.reducedMotion = true;
    note->show();
    EXPECT_EQ(surface.opening()->motion, Surface::Motion());
}

TEST_F(NoteTest, AsksAboutNewIconsAndSuggestions) {
    launchNamed("app.cloud", "Cloud");
    note->show();
    EXPECT_TRUE(logged("[note] shown: 1 new, 1 suggestions"));
    EXPECT_THAT(read(), ElementsAre("New arrival", "Waiting by the door until you choose where it goes.",
                                    "Cloud just moved in", "Keep in the bar: Cloud", "Tuck: Cloud",
                                    "Bury: Cloud", "Show me: Cloud", "Tidy suggestions",
                                    "Based on what you click. Nothing moves until you say so.", "Dusty",
                                    "Gathering dust: not clicked in 20 days", "Tuck: Dusty",
                                    "Maybe later: Dusty", "Always keep here: Dusty", "Later"));
    EXPECT_EQ(view::find(*surface.content(), "always:app.dusty")->help,
              "Autopilot won't suggest moving this app again");
    EXPECT_FALSE(surface.press({.key = Key::enter})) << "only Escape puts it off";
    press("show:app.cloud");
    EXPECT_TRUE(shows("app.cloud") && !shows("app.dusty"));
    EXPECT_THAT(read(), Contains("Stop showing: Cloud"));
    press("show:app.cloud");
    EXPECT_TRUE(!shows("app.cloud") && shows("app.dusty"));
    const ProcessID wind = launchNamed("app.wind", "Wind");
    EXPECT_THAT(read(), IsSupersetOf({"New arrivals", "Waiting by the door until you choose where they go.",
                                      "Wind just moved in", "Show me: Cloud"}));
    press("always:app.dusty");
    EXPECT_TRUE(saved().alwaysKeep.contains("app.dusty"));
    mac.quit(wind);
    pass(1s);
    EXPECT_THAT(read(),
                IsSupersetOf({"(Show me: Wind)", "Bury: Wind",
                              "It has no icon in the menu bar right now, so there is none to show."}));
}

TEST_F(NoteTest, PutsANewIconWhereTheUserSaysAndCloses) {
    keepDusty();
    struct GivenAnswer {
        std::string button;
        std::string line;
        bool shows;
    };
    const std::array answers{GivenAnswer{"keep:app.a", "app.a -> bar (new icon answered)", true},
                             GivenAnswer{"tuck:app.b", "app.b -> tucked (new icon answered)", false},
                             GivenAnswer{"bury:app.c", "app.c -> buried (new icon answered)", false}};
    for (const GivenAnswer& answer : answers) {
        const BundleID app = answer.button.substr(5);
        launchNamed(app, "App");
        note->show();
        press(answer.button);
        EXPECT_TRUE(logged(answer.line));
        EXPECT_EQ(shows(app), answer.shows);
        EXPECT_EQ(read(), spotless);
        pass(1190ms);
        EXPECT_TRUE(note->isShowing());
        pass(20ms);
        EXPECT_FALSE(note->isShowing());
        EXPECT_FALSE(values().noteDeferred);
    }
}

TEST_F(NoteTest, DoesWhatTheUserAnswersToASuggestion) {
    launchNamed("app.handy", "Handy");
    mac.processes.setMemory(launchNamed("app.hog", "Hog"), 500ULL << 20U);
    pass(31s);
    note->show();
    EXPECT_THAT(read(),
                IsSupersetOf({"In and out a lot: clicked on 3 of the last 7 days", "Move to the bar: Handy",
                              "Quit: Hog", "Hogging 500 MB, and not clicked in 20 days"}));
    press("accept:app.handy");
    EXPECT_TRUE(logged("[autopilot] accepted: app.handy -> bar"));
    EXPECT_TRUE(shows("app.handy"));
    press("accept:app.hog");
    EXPECT_TRUE(logged("[health] asked Hog to quit"));
    press("later:app.dusty");
    EXPECT_TRUE(logged("[autopilot] not now: app.dusty"));
    EXPECT_EQ(read(), spotless);
    launchNamed("app.wind", "Wind");
    pass(10s);
    EXPECT_TRUE(note->isShowing()) << "somebody moved in while it said goodbye";
    press("tuck:app.wind");
    pass(2s);
    EXPECT_FALSE(note->isShowing());
}

TEST_F(NoteTest, AnswersManyQuestionsTogetherAndTheFirstByDigits) {
    launchNamed("app.handy", "Handy");
    for (int app = 1; app <= 12; ++app) {
        launchNamed("app.n" + std::to_string(app), "N" + std::to_string(app));
    }
    note->show();
    const auto digit = [&](char key) {
        EXPECT_TRUE(surface.press({.key = Key::character, .character = key}));
        pass(200ms);
    };
    digit('1');
    digit('2');
    digit('3');
    EXPECT_EQ(saved().section("app.n1"), Section::bar);
    EXPECT_EQ(saved().section("app.n2"), Section::tucked);
    EXPECT_EQ(saved().section("app.n3"), Section::buried);
    EXPECT_EQ(saved().inbox.size(), 9U);
    press("undo:button");
    EXPECT_EQ(saved().inbox.size(), 10U) << "the last answer was a mistake";
    press("undo:button");
    EXPECT_EQ(saved().inbox.size(), 9U) << "or not";
    const auto applied = timesLogged("[engine] applied (section changed)");
    press("keep-all");
    EXPECT_TRUE(saved().inbox.empty() && shows("app.n4") && shows("app.n12"));
    EXPECT_EQ(timesLogged("[engine] applied (section changed)"), applied + 1);
    digit('2');
    EXPECT_TRUE(logged("[autopilot] not now: app.dusty"));
    EXPECT_EQ(view::find(*surface.content(), "accept-all"), nullptr) << "one suggestion is left";
    velko->autopilot().alwaysKeep("app.handy");
    pass(200ms);
    EXPECT_EQ(read(), spotless);
}

TEST_F(NoteTest, AcceptsAllSuggestionsAndMarksNamesFromRightToLeft) {
    launchNamed("app.handy", "Handy");
    note->show();
    press("accept-all");
    EXPECT_EQ(saved().section("app.handy"), Section::bar);
    EXPECT_EQ(saved().section("app.dusty"), Section::tucked);
    EXPECT_EQ(read(), spotless);
    const ProcessID pid = launchNamed("app.a", "מזג אוויר");
    launchNamed("app.b", "B");
    EXPECT_THAT(read(), Contains("\u2068מזג אוויר\u2069 just moved in"));
    mac.quit(pid);
    pass(1min);
    mac.mainThread.setDate(mac.mainThread.date() + std::chrono::days(7));
    pass(1min);
    EXPECT_TRUE(logged("[inbox] away for a week, no longer asked about: app.a"));
    EXPECT_EQ(saved().inbox, std::vector<BundleID>{"app.b"});
}

TEST_F(NoteTest, KnowsTheClickThatClosedItAndWhatItLeftOpen) {
    EXPECT_FALSE(note->justClosed());
    note->show();
    mac.surfaces.clickOutside();
    pass(399ms);
    EXPECT_TRUE(note->justClosed());
    pass(1ms);
    EXPECT_FALSE(note->justClosed());
    launchNamed("app.cloud", "Cloud");
    note->show();
    EXPECT_TRUE(surface.press({.key = Key::escape}));
    pass(1s);
    EXPECT_TRUE(values().noteDeferred);
    note->show();
    note->show();
    launchNamed("app.wind", "Wind");
    ASSERT_TRUE(note->isShowing()) << "the farewell of the first does not end the second";
    EXPECT_THAT(read(), Contains("Wind just moved in"));
    note.reset();
    EXPECT_FALSE(surface.isOpen());
}

}  // namespace
}  // namespace velko
