#include <algorithm>
#include <gtest/gtest.h>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/Language/Script.h"
#include "Scenarios/Language/Verbs.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "tests/TemporaryFolder.h"

namespace velko::script {
namespace {

/// Plays a scenario on a new Mac. Returns "" when it reaches its end, or else the mistake.
class Scenario : public testing::Test {
 protected:
    std::string play(std::string_view text) {
        const auto scenario = read(text);
        const auto outcome = scenario ? script::play(*scenario, world) : std::unexpected(scenario.error());
        return outcome ? "" : std::to_string(outcome.error().line) + ": " + outcome.error().what;
    }

    TemporaryFolder folder;
    scenarios::World world{folder.path()};
};

TEST_F(Scenario, StopsAtItsFirstMistake) {
    EXPECT_EQ(play("wait 1 s\n\nwiat 1 s"), "3: There is no verb \"wiat\".");
    EXPECT_EQ(world.mac().mainThread.now().count(), 0) << "nothing is played of what can't be read";
    EXPECT_EQ(play("launch Slack\nexpect hidden Slack\nlaunch Zoom"), "2: Slack shows.");
    EXPECT_TRUE(world.mac().workspace.pids("us.zoom.xos").empty());
    EXPECT_EQ(play("quit Zoom"), "1: Zoom does not run.");
    EXPECT_EQ(play("open Slack"), "1: Velko does not run.");
    EXPECT_EQ(play("icon width Slack 40 icon 2"), "1: Slack has no such icon.");
    EXPECT_EQ(play("velko start\nwait 1 s\nexpect state revealed"), "3: It is collapsed, not revealed.");
    EXPECT_EQ(play("accept Slack"), "1: Velko suggests nothing for Slack.");
    EXPECT_EQ(play("quit app.velko.mac"), "1: Velko's own process is left alone.");
    EXPECT_EQ(play("expect lacks shelf \"Slack\""), "1: The shelf says that, or is not open.");
}

TEST_F(Scenario, ReachesTheFilesTheEngineAndTheSettings) {
    EXPECT_EQ(play(R"(
launch Slack
launch Zoom heavy
velko start
wait 5 s
finish setup
file place Slack tucked         # by another program
file reload
wait 1 s
expect hidden Slack
expect tidied 1
export mine
wait 1 s
place Slack bar
import mine                     # brings the section back
wait 1 s
expect hidden Slack
import                          # the panel is closed
file spoil
file reload
wait 1 s
expect health layout-unreadable
expect visible Slack
place Slack tucked              # the user's own edit replaces the spoilt file
wait 1 s
velko quit
engine missing
velko start
expect health engine-missing
velko quit
engine recover
velko start
wait 5 s
expect health ok
expect hidden Slack
click broom
wait 1 s
expect visible Slack
engine raise
click broom
wait 1 s
expect logged "Not today"
engine recover
set auto-tuck 0
click broom
wait 1 h
expect state revealed
icon add Zoom title Second
icon remove Zoom icon 1
expect visible Zoom
)"),
              "");
}

TEST_F(Scenario, WorksWhatVelkoShowsAsAPersonDoes) {
    EXPECT_EQ(play(R"(
launch Slack
launch Dropbox
file place Dropbox tucked
velko start
wait 5 s
close setup
finish setup
right click broom
choose "Settings…"
press settings style-other "On the shelf"
)"),
              "11: The settings has no style-other.");
    EXPECT_EQ(play(R"(
press settings pages General
press settings style-other "On the shelf"
press settings hover on
point at broom                  # and rest there
wait 1 s
expect open shelf
point at desktop
wait 2 s
expect closed shelf
click broom option
wait 1 s
drop Dropbox shelf group:buried
wait 1 s
choose in shelf tile:com.getdropbox.dropbox "Keep in the Bar"
wait 1 s
expect visible Dropbox
click icon Slack                # a click outside
expect closed shelf
control click broom option
choose "Show All"
launch com.example.new
wait 20 s
right click broom
wait 1 s
choose "1 New Icon"
expect says note "new just moved in"
press escape
expect closed note
right click broom
wait 1 s
choose "Quit Velko"
expect closed settings
)"),
              "");
    EXPECT_EQ(play("press shelf tile:a"), "1: The shelf is not open.");
    EXPECT_EQ(play("choose Slack"), "1: The broom's menu is not open, or has no such entry to choose.");
}

TEST(Acts, AreThereForEveryVerbOnce) {
    std::vector<Verb> acts;
    const auto add = [&](const auto& table) {
        for (const auto& act : table) {
            acts.push_back(act.verb);
        }
    };
    std::ranges::for_each(macActs(), add);
    add(appActs());
    add(velkoActs());
    add(settingActs());
    std::vector<Verb> rows;
    for (const VerbRow& row : verbs()) {
        if (row.control.empty() || std::ranges::count(rows, row.verb) == 0) {
            rows.push_back(row.verb);
        }
    }
    std::ranges::sort(acts);
    std::ranges::sort(rows);
    EXPECT_EQ(acts, rows);
    EXPECT_EQ(std::ranges::adjacent_find(rows), rows.end());
}

}  // namespace
}  // namespace velko::script
