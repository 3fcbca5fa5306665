#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>

#include "Scenarios/Language/Script.h"
#include "Scenarios/World.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "tests/TemporaryFolder.h"

namespace velko::script {
namespace {

using namespace std::chrono_literals;

/// Something that Velko must not do, done in its name at the line `say "Now"` of a scenario.
struct Breach {
    const char* name;
    const char* scenario;
    void (*commit)(scenarios::World&);
    const char* found;  ///< how the judge names it; empty: it is allowed
};

void PrintTo(const Breach& breach, std::ostream* out) {
    *out << breach.name;
}

/// Replaces what another program wrote, as a Velko that keeps no copy would.
void overwriteLayout(scenarios::World& world) {
    writeFile(world.layoutFile(), "{}");
}

constexpr auto sorted = R"(
launch Slack
launch Dropbox
file place Dropbox tucked
file place Slack bar
velko start
wait 5 s
finish setup
)";

constexpr auto putOff = R"(
clock forward 15 days
wait 61 min
click broom
wait 1 s
expect open note
press escape
wait 1 s
)";

constexpr Breach breaches[] = {
    {"GuideWithoutItsWindow", "say \"Now\"\nwait 1 s",
     [](scenarios::World& world) {
         world.mac()
             .surfaces.surface(Surfaces::Kind::permissionGuide)
             .open({.title = "Guide", .content = view::text("a", "b")});
     },
     "the guide goes with the window"},
    {"UnreadableLayoutThatVelkoHasSeen", "file spoil\nfile reload\nsay \"Now\"\nwait 1 s", overwriteLayout,
     "an unreadable layout is lost"},
    {"UnreadableLayoutThatVelkoHasNotSeen", "file spoil\nsay \"Now\"\nwait 1 s", overwriteLayout, ""},
    {"AsksAgainWithoutNews", "say \"Now\"\nwait 70 min",
     [](scenarios::World& world) {
         world.mac().mainThread.happen(65min, [&world] { world.velko()->note().askAgain(); });
     },
     "asked about again when there is news"},
    {"PlacesUnasked", "say \"Now\"\nwait 1 s",
     [](scenarios::World& world) { world.velko()->place("com.tinyspeck.slackmacgap", Section::buried); },
     "the user alone decides"},
    {"RevealsUnasked", "say \"Now\"\nwait 1 s", [](scenarios::World& world) { world.velko()->toggle(); },
     "icons come out and go for a click"},
    {"TucksTooSoon", "click broom\nwait 1 s\nsay \"Now\"\nwait 1 s",
     [](scenarios::World& world) { world.velko()->handle(RevealEvent::autoTuck()); },
     "icons tuck themselves when their time is over"},
    {"MayPlaceWhatIsOut",
     "wait 1 min\nicon title Dropbox \"new\"\nwait 5 s\nexpect visible Dropbox\nsay \"Now\"\n"
     "place Dropbox tucked\nwait 1 s\nexpect hidden Dropbox",
     [](scenarios::World&) {}, ""},
    {"ShowsAllUnasked", "say \"Now\"\nwait 1 s", [](scenarios::World& world) { world.velko()->showAll(); },
     "icons never flash up"},
    {"ShowsOneAloneUnasked", "say \"Now\"\nwait 1 s",
     [](scenarios::World& world) { world.velko()->showMe().start("com.getdropbox.dropbox"); },
     "the user alone decides"},
    {"OpensUnasked", "say \"Now\"\nwait 1 s",
     [](scenarios::World& world) { world.velko()->open("com.getdropbox.dropbox"); },
     "the user alone decides"},
    {"SwitchesUnasked", "say \"Now\"\nwait 1 s",
     [](scenarios::World& world) { world.velko()->preferences().setSwitch(Switch::popOutOnChange, false); },
     "the user alone decides"},
    {"KeepsForEverUnasked", "say \"Now\"\nwait 1 s",
     [](scenarios::World& world) { world.velko()->autopilot().alwaysKeep("com.tinyspeck.slackmacgap"); },
     "the user alone decides"},
    {"DismissesUnasked", "say \"Now\"\nwait 1 s",
     [](scenarios::World& world) { world.velko()->autopilot().dismiss("com.tinyspeck.slackmacgap"); },
     "the user alone decides"},
    {"OffersAgainWithinAWeek", "say \"Now\"\nwait 1 s",
     [](scenarios::World& world) { world.log().log("autopilot", "offering 1 suggestion"); },
     "offers are made once a week"},
    {"ReadsTheFileAgainUnasked", "file place Dropbox bar\nsay \"Now\"\nwait 1 s",
     [](scenarios::World& world) { world.velko()->loadLayout(); }, "the user alone decides"},
};

class Judge : public testing::TestWithParam<Breach> {};

TEST_P(Judge, Finds) {
    const TemporaryFolder folder;
    scenarios::World world{folder.path()};
    const auto scenario = read(std::string(sorted) + putOff + GetParam().scenario);
    ASSERT_TRUE(scenario) << scenario.error().line << ": " << scenario.error().what;
    const auto outcome = play(*scenario, world, [&](const Step& step) {
        if (step.verb == Verb::say) {
            GetParam().commit(world);
        }
        return true;
    });
    const std::string found = outcome ? "" : outcome.error().what;
    EXPECT_TRUE(*GetParam().found == 0 ? found.empty() : found.contains(GetParam().found)) << found;
}

INSTANTIATE_TEST_SUITE_P(Table, Judge, testing::ValuesIn(breaches),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace velko::script
