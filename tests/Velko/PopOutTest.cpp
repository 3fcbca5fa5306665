#include <algorithm>
#include <iterator>
#include <map>

#include "Velko/Flows/Preferences.h"
#include "tests/Dice.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class PopOutTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        app = launch("com.example.tucked", Section::tucked);
        other = launch("com.example.other", Section::tucked);
        buried = launch("com.example.buried", Section::buried);
    }

    void change(ProcessID pid, const std::string& title) {
        mac.changeIcon(pid, 0, [&](SimulatedIcon& icon) { icon.title = title; });
    }

    ProcessID app = 0;
    ProcessID other = 0;
    ProcessID buried = 0;
};

TEST_F(PopOutTest, LetsAChangedTuckedIconOutForTenSeconds) {
    start();
    change(app, "1 new message");
    change(buried, "1 new message");
    pass(3s);
    EXPECT_TRUE(shows("com.example.tucked"));
    EXPECT_FALSE(shows("com.example.other"));
    EXPECT_FALSE(shows("com.example.buried"));
    EXPECT_TRUE(logged("[popout] com.example.tucked changed: out for 10.0 seconds"));
    EXPECT_TRUE(logged("[engine] applied (pop out com.example.tucked) in "));
    pass(10s);
    EXPECT_FALSE(shows("com.example.tucked"));
    EXPECT_TRUE(logged("[popout] pop out over com.example.tucked"));
}

TEST_F(PopOutTest, EndsAtOnceWhenSwitchedOffAndBeginsAnewWhenSwitchedOn) {
    start();
    change(app, "1 new message");
    change(other, "1 new message");
    pass(2500ms);
    EXPECT_EQ(values().poppedOut.size(), 2U);
    velko->preferences().setSwitch(Switch::popOutOnChange, false);
    pass(1s);
    EXPECT_FALSE(shows("com.example.tucked"));
    EXPECT_TRUE(values().poppedOut.empty());
    EXPECT_TRUE(logged("[engine] applied (pop out off) in "));
    pass(6min);
    EXPECT_FALSE(logged("pop out over"));
    change(app, "2 new messages");
    velko->preferences().setSwitch(Switch::popOutOnChange, true);
    pass(5s);
    EXPECT_FALSE(shows("com.example.tucked")) << "what changed meanwhile is not news";
    change(app, "3 new messages");
    pass(3s);
    EXPECT_TRUE(shows("com.example.tucked"));
}

TEST_F(PopOutTest, LeavesAloneWhatWaitsForAnAnswer) {
    layout.hasCompletedSetup = true;
    start();
    const ProcessID newcomer = launch("com.example.new");
    pass(3s);
    change(newcomer, "Hello");
    pass(5s);
    EXPECT_FALSE(shows("com.example.new"));
    velko->place("com.example.new", Section::tucked);
    pass(3s);
    change(newcomer, "Hello again");
    pass(3s);
    EXPECT_TRUE(shows("com.example.new"));
}

TEST_F(PopOutTest, MakesAnAppQuietForTheDayThatChangesAllTheTime) {
    start();
    const auto changeFor = [&](int times) {
        for (int time = 0; time < times; ++time) {
            change(app, std::to_string(mac.mainThread.now().count()));
            pass(5min);
        }
    };
    changeFor(11);
    velko->open("com.example.tucked");  // a click: it is welcome
    mac.closeMenu();
    changeFor(11);
    EXPECT_EQ(timesLogged("changed: out"), 22);
    EXPECT_TRUE(values().layout.quietUntil.empty());
    changeFor(3);
    EXPECT_EQ(timesLogged("changed: out"), 23) << "the twelfth is the last";
    EXPECT_EQ(timesLogged("[popout] com.example.tucked changes all the time: quiet until tomorrow"), 1);
    EXPECT_TRUE(values().layout.isQuiet("com.example.tucked", floorToSeconds(mac.mainThread.date())));
    EXPECT_TRUE(saved().quietUntil.contains("com.example.tucked")) << "and after a restart";
    change(other, "news");
    pass(3s);
    EXPECT_TRUE(shows("com.example.other")) << "the others are not";
    pass(24h);
    changeFor(1);
    EXPECT_EQ(timesLogged("com.example.tucked changed: out"), 24) << "it is another day";
}

TEST_F(PopOutTest, LeavesAloneWhatTheUserDoesNotWantToSee) {
    start();
    change(app, "1 new message");
    pass(3s);
    velko->preferences().setPopsOut("com.example.tucked", false);
    pass(1s);
    EXPECT_FALSE(shows("com.example.tucked"));
    EXPECT_TRUE(logged("[settings] show when it changes com.example.tucked false"));
    EXPECT_EQ(saved().neverPopOut, BundleIDs{"com.example.tucked"});
    pass(6min);
    change(app, "2 new messages");
    change(other, "1 new message");
    pass(3s);
    EXPECT_FALSE(shows("com.example.tucked"));
    EXPECT_TRUE(shows("com.example.other"));
    velko->preferences().setPopsOut("com.example.tucked", true);
    pass(3s);
    change(app, "3 new messages");
    pass(3s);
    EXPECT_TRUE(shows("com.example.tucked"));
}

/// Several apps that change, move and rest at once. When each is out is told a second time: from the look
/// that notices it, every two seconds, for ten seconds, and not again within five minutes.
class PopOutsTogether : public VelkoOnMac, public testing::WithParamInterface<unsigned> {
 protected:
    using Uptime = MainThread::Uptime;

    void SetUp() override {
        for (const BundleID& app : apps) {
            pids[app] = launch(app, dice.isOneIn(3) ? dice.oneOf(allSections) : Section::tucked);
        }
        start();
        looked();
    }

    [[nodiscard]] bool isWatched(const BundleID& app) const {
        return isOn && layout.section(app) == Section::tucked;
    }
    [[nodiscard]] bool isCooling(const BundleID& app) const {
        const auto last = lastBegun.find(app);
        return last != lastBegun.end() && mac.mainThread.now() + 1s - last->second < 5min;
    }
    /// Whether the five minutes end with the next look, of which nobody can tell whether it is too early.
    [[nodiscard]] bool isOnTheDot(const BundleID& app) const {
        const auto last = lastBegun.find(app);
        return last != lastBegun.end() && mac.mainThread.now() + 1s - last->second == 5min;
    }
    void looked() {
        known.clear();
        std::ranges::copy_if(apps, std::inserter(known, known.end()),
                             [this](const BundleID& app) { return isWatched(app); });
    }

    void place(const BundleID& app) {
        layout.place(app, dice.oneOf(allSections));
        velko->place(app, layout.section(app));
        ends.erase(app);
        if (!isWatched(app)) {
            known.erase(app);
        }
    }
    void flip() {
        isOn = !isOn;
        velko->preferences().setSwitch(Switch::popOutOnChange, isOn);
        if (!isOn) {
            ends.clear();
            known.clear();
        }
    }
    /// Has about one app in three change, just before Velko looks.
    void changeSome() {
        for (const BundleID& app : apps) {
            if (!dice.isOneIn(3) || isOnTheDot(app)) {
                continue;
            }
            mac.changeIcon(pids[app], 0,
                           [&](SimulatedIcon& icon) { icon.title = icon.title.value_or("") + "!"; });
            if (isWatched(app) && known.contains(app) && !isCooling(app)) {
                lastBegun[app] = mac.mainThread.now() + 1s;
                ends[app] = lastBegun[app] + 10s;
                ++begun;
            }
        }
    }
    /// Lets an even number of seconds pass; each of them begins and ends between two looks.
    void rest(std::chrono::seconds duration) {
        pass(duration);
        looked();
        over += static_cast<int>(
            std::erase_if(ends, [this](const auto& end) { return end.second <= mac.mainThread.now(); }));
    }
    void check() {
        BundleIDs out;
        for (const auto& [app, end] : ends) {
            out.insert(app);
        }
        EXPECT_EQ(values().poppedOut, out);
        for (const BundleID& app : apps) {
            EXPECT_EQ(shows(app), layout.section(app) == Section::bar || out.contains(app)) << app;
        }
        EXPECT_EQ(timesLogged(" changed: out for 10.0 seconds"), begun);
        EXPECT_EQ(timesLogged("[popout] pop out over "), over);
    }

    const std::vector<BundleID> apps{"app.a", "app.b", "app.c", "app.d", "app.e"};
    Dice dice{GetParam()};
    std::map<BundleID, ProcessID> pids;
    bool isOn = true;
    BundleIDs known;  ///< of whom the last look knows what they showed
    std::map<BundleID, Uptime> ends;
    std::map<BundleID, Uptime> lastBegun;
    int begun = 0;
    int over = 0;
};

TEST_P(PopOutsTogether, EachEndInTheirOwnTime) {
    for (int step = 0; step < 80 && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        switch (dice.roll(8)) {
            case 0: place(dice.oneOf(apps)); break;
            case 1:
                if (dice.isOneIn(3)) {
                    flip();
                }
                break;
            case 2: rest(102s * (1 + dice.roll(3))); break;
            default: changeSome(); break;
        }
        rest(2s * (1 + dice.roll(3)));
        check();
    }
    EXPECT_GT(over, 0);
}

INSTANTIATE_TEST_SUITE_P(Seed, PopOutsTogether, testing::Range(1U, 9U));

}  // namespace
}  // namespace velko
