#include <algorithm>
#include <array>
#include <map>
#include <tuple>

#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "tests/Dice.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class PreferencesTest : public VelkoOnMac {
 protected:
    void SetUp() override { launch("com.example.tucked", Section::tucked); }
};

TEST_F(PreferencesTest, AreSavedAtOnceAndLogged) {
    start();
    Preferences& preferences = velko->preferences();
    preferences.setSwitch(Switch::askAboutNewIcons, false);
    EXPECT_TRUE(log.lines().back().ends_with("[settings] ask about new icons false"));
    preferences.setSwitch(Switch::showLiveActivities, false);
    EXPECT_TRUE(log.lines().back().ends_with("[settings] show Live Activities false"));
    preferences.setSwitch(Switch::popOutOnChange, false);
    EXPECT_TRUE(log.lines().back().ends_with("[settings] pop out on change false"));
    preferences.setSwitch(Switch::autopilot, false);
    EXPECT_TRUE(log.lines().back().ends_with("[settings] autopilot false"));
    preferences.setReveal({.autoTuckSeconds = 90, .otherStyle = RevealStyle::shelf, .hover = true});
    EXPECT_TRUE(log.lines().back().ends_with("[settings] reveal settings 30, shelf, shelf, true"));
    const Layout file = saved();
    EXPECT_FALSE(file.askAboutNewIcons || file.showLiveActivities || file.popOutOnChange ||
                 file.autopilot.enabled);
    EXPECT_EQ(file.reveal, values().layout.reveal);
    EXPECT_EQ(file.reveal.autoTuckSeconds, 30);
}

TEST_F(PreferencesTest, DecideWhereAppsWithoutAPlaceGo) {
    launch("com.example.unsorted");
    start();
    velko->preferences().setNewIconDefault(Section::tucked);
    pass(1s);
    EXPECT_FALSE(shows("com.example.unsorted"));
    EXPECT_TRUE(logged("[settings] new icons go to tucked"));
    EXPECT_TRUE(logged("applied (new icon default)"));
    EXPECT_EQ(saved().newIconDefault, Section::tucked);
}

TEST_F(PreferencesTest, ChangeTheTimeOfIconsThatAreOutAlready) {
    launch("com.example.buried", Section::buried);
    start();
    velko->toggle(true);
    EXPECT_TRUE(logged("toggleWithBuried: collapsed -> revealed with buried"));
    velko->preferences().setReveal({.autoTuckSeconds = 0});
    pass(24h);
    EXPECT_TRUE(shows("com.example.buried"));
    EXPECT_TRUE(shows("com.example.tucked"));
    velko->preferences().setReveal({.autoTuckSeconds = 10});
    pass(11s);
    EXPECT_FALSE(shows("com.example.tucked"));
}

TEST_F(PreferencesTest, LeaveLaunchAtLoginToTheSystem) {
    start();
    EXPECT_TRUE(logged("[app] launch at login not registered"));
    velko->preferences().setLaunchAtLogin(true);
    EXPECT_EQ(mac.loginItem.status(), LoginItem::Status::enabled);
    EXPECT_TRUE(logged("[settings] launch at login true"));
    mac.loginItem.refusal = "Operation not permitted";
    velko->preferences().setLaunchAtLogin(false);
    EXPECT_TRUE(logged("[settings] launch at login failed: Operation not permitted"));
    EXPECT_EQ(values().loginRevision, 2);
}

/// Switches flipped in any order and in every way, while icons are out for various reasons. What is out, what
/// is asked and what is saved is told a second time.
class SwitchesInAnyOrder : public VelkoOnMac, public testing::WithParamInterface<unsigned> {
 protected:
    using Uptime = MainThread::Uptime;

    struct Newcomer {
        bool isAskedAbout = false;
        bool isPlaced = false;  ///< tucked
    };

    void SetUp() override {
        const Date today = floorToSeconds(mac.mainThread.date());
        layout.hasCompletedSetup = true;
        layout.seenApps = BundleIDs{"app.tucked", "app.unsorted", "app.dusty"};
        layout.autopilot.watchingSince = today - std::chrono::days(20);
        layout.lastClicked = {{"app.tucked", today}, {"app.unsorted", today}};
        changing = launch("app.tucked", Section::tucked);
        launch("app.unsorted");
        launch("app.dusty", Section::bar);
        const auto renderer = mac.launch({.name = "WidgetRenderer_Activities", .isApplication = false});
        start();
        pass(10s);
        isActivityOn = dice.isOneIn(2);
        mac.processes.work(renderer, isActivityOn ? 0.01 : 0);
        pass(15s);
    }

    /// Changes one of the switches, as `wanted` then has them. Whether it is one that others can bring.
    bool change(Layout& wanted) {
        constexpr std::array times{0, 3, 5, 10};
        constexpr std::array styles{RevealStyle::inline_, RevealStyle::shelf};
        const bool isOn = dice.isOneIn(2);
        switch (dice.roll(6)) {
            case 0: wanted.popOutOnChange = isOn; return true;
            case 1: wanted.showLiveActivities = isOn; return true;
            case 2: wanted.askAboutNewIcons = isOn; return true;
            case 3: wanted.newIconDefault = dice.oneOf(allSections); return true;
            case 4: wanted.autopilot.enabled = isOn; return false;
            default:
                wanted.reveal = {
                    .autoTuckSeconds = dice.oneOf(times), .otherStyle = dice.oneOf(styles), .hover = isOn};
                return true;
        }
    }
    void flip() {
        Layout wanted = values().layout;
        const bool travels = change(wanted);
        const std::size_t way = dice.roll(travels ? 3 : 2);
        if (way == 0) {
            flipByHand(wanted);
        } else if (way == 1) {
            ASSERT_TRUE(LayoutStore(file()).save(wanted));
            velko->loadLayout();
        } else {
            writeFile(folder.path() / "other.velko", LayoutExport::of(wanted).data());
            velko->transfer().importLayout();
            mac.dialogs.choose(folder.path() / "other.velko");
            pass(0s);
            mac.dialogs.answer(true);
            for (auto& [app, newcomer] : newcomers) {
                newcomer.isAskedAbout = false;  // the other Mac knows where it goes
            }
        }
        if (way > 0 || wanted.reveal != layout.reveal) {
            beginWait(wanted.reveal);
        }
        layout = wanted;
        if (!layout.popOutOnChange) {
            outUntil.reset();
        }
    }
    void flipByHand(const Layout& wanted) {
        Preferences& preferences = velko->preferences();
        const Layout before = values().layout;
        const std::tuple<Switch, bool, bool> switches[] = {
            {Switch::popOutOnChange, before.popOutOnChange, wanted.popOutOnChange},
            {Switch::showLiveActivities, before.showLiveActivities, wanted.showLiveActivities},
            {Switch::askAboutNewIcons, before.askAboutNewIcons, wanted.askAboutNewIcons},
            {Switch::autopilot, before.autopilot.enabled, wanted.autopilot.enabled}};
        for (const auto& [which, was, is] : switches) {
            if (is != was) {
                preferences.setSwitch(which, is);
            }
        }
        if (wanted.newIconDefault != before.newIconDefault) {
            preferences.setNewIconDefault(wanted.newIconDefault);
        }
        if (wanted.reveal != before.reveal) {
            preferences.setReveal(wanted.reveal);
        }
    }

    /// What is out goes in a while from now.
    void beginWait(const RevealSettings& reveal) {
        const std::chrono::seconds seconds(reveal.autoTuckSeconds);
        tucksAt = seconds > 0s ? std::optional(mac.mainThread.now() + seconds) : std::nullopt;
    }
    void toggle() {
        if (isActivityOn && layout.showLiveActivities) {
            return;  // would mean something else
        }
        isOut = !isOut;
        style = isOut ? layout.reveal.otherStyle : style;
        velko->toggle();
        beginWait(layout.reveal);
    }
    /// Changes the tucked icon at a time when that is news.
    void changeIcon() {
        rest(6min);
        mac.changeIcon(changing, 0, [](SimulatedIcon& icon) { icon.title = icon.title.value_or("") + "!"; });
        if (layout.popOutOnChange) {
            const auto look =
                std::chrono::ceil<std::chrono::duration<long, std::ratio<2>>>(mac.mainThread.now());
            outUntil = look + 10s + 50ms;
        }
        rest(2600ms);
    }
    void comeNew() {
        const BundleID app = "app.new" + std::to_string(newcomers.size());
        launch(app);
        newcomers[app] = {.isAskedAbout = layout.askAboutNewIcons, .isPlaced = layout.askAboutNewIcons};
    }
    void rest(std::chrono::milliseconds duration) {
        pass(duration);
        const auto now = mac.mainThread.now();
        isOut = isOut && (!tucksAt || now < *tucksAt);
        if (outUntil && now >= *outUntil) {
            outUntil.reset();
        }
    }

    void check() {
        const bool isActivity = isActivityOn && layout.showLiveActivities;
        const bool areTuckedOut = isActivity || (isOut && style == RevealStyle::inline_);
        const auto showsFrom = [&](Section section) {
            return isActivity || section == Section::bar || (section == Section::tucked && areTuckedOut);
        };
        EXPECT_EQ(values().liveActivityShowing, isActivity);
        EXPECT_EQ(!values().poppedOut.empty(), outUntil.has_value());
        EXPECT_EQ(values().state.isRevealed(), isOut);
        EXPECT_EQ(velko->autopilot().suggestions().empty(), !layout.autopilot.enabled);
        EXPECT_EQ(shows("app.tucked"), areTuckedOut || outUntil);
        EXPECT_EQ(shows("app.unsorted"), showsFrom(layout.newIconDefault));
        EXPECT_TRUE(shows("app.dusty"));
        for (const auto& [app, newcomer] : newcomers) {
            EXPECT_EQ(std::ranges::count(saved().inbox, app) > 0, newcomer.isAskedAbout) << app;
            EXPECT_EQ(shows(app), showsFrom(newcomer.isPlaced ? Section::tucked : layout.newIconDefault))
                << app;
        }
        expectSettled();
    }

    Dice dice{GetParam()};
    ProcessID changing = 0;
    bool isActivityOn = false;
    bool isOut = false;
    RevealStyle style = RevealStyle::inline_;
    std::optional<Uptime> tucksAt;   ///< when what is out goes by itself
    std::optional<Uptime> outUntil;  ///< when the icon that has changed goes
    std::map<BundleID, Newcomer> newcomers;
};

TEST_P(SwitchesInAnyOrder, TakeEffectAtOnceAndNothingElseDoes) {
    for (int step = 0; step < 60 && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step) + "\n" + std::string(log.lines().back()));
        switch (dice.roll(10)) {
            case 0:
            case 1: toggle(); break;
            case 2: changeIcon(); break;
            case 3: comeNew(); break;
            default: flip(); break;
        }
        rest(1300ms * (1 + static_cast<int>(dice.roll(6))));
        check();
        EXPECT_EQ(saved().reveal, layout.reveal);
    }
}

INSTANTIATE_TEST_SUITE_P(Seed, SwitchesInAnyOrder, testing::Range(1U, 9U));

}  // namespace
}  // namespace velko
