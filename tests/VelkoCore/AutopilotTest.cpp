#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <variant>
#include <vector>

#include "VelkoCore/Habits/Autopilot.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

// These rules hold in every time zone; some zones run them as tests of their own.

namespace velko {
namespace {

using namespace std::chrono_literals;
using enum Section;
using Days = std::int64_t;
using Dates = std::map<BundleID, Date>;
const auto seed = std::random_device{}();
const Calendar calendar;
const Date now = calendar.startOfDay(Date{std::chrono::sys_days{std::chrono::year{2026} / 4 / 15}}) + 15h;
const auto daysAgo = [](Days days) { return calendar.addingDays(-days, now); };
const auto on = [](Days days) { return Dates{{"a", daysAgo(days)}}; };

/// The section of one app after its suggestion was accepted, and the reason.
std::string suggestion(Section section, Days watched, const Dates& clicked, const Dates& seen,
                       const std::vector<Days>& clickDays, const AppUsage& usage) {
    Layout layout;
    layout.newIconDefault = section;
    layout.autopilot.watchingSince = daysAgo(watched);
    layout.autopilot.snoozedUntil["a"] = now;  // the snooze is over
    layout.lastClicked = clicked;
    layout.firstSeen = seen;
    for (const Days day : clickDays) {
        layout.clickDays["a"].push_back(calendar.startOfDay(daysAgo(day)));
    }
    const auto found = Autopilot::suggestions({layout, {"a"}, {{"a", usage}}, now, calendar});
    std::string text;
    for (const TidySuggestion& one : found) {
        layout.accept(one);
        text += std::string{name(layout.section("a"))} + ". " + describe(one.reason);
    }
    return text;
}

TEST(Autopilot, SuggestsWhatAnAppsPastCallsFor) {
    const std::string unused = "Gathering dust: not clicked in ";
    const std::string often = "bar. In and out a lot: clicked on 3 of the last 7 days";
    const AppUsage large{500'000'000, {}};
    EXPECT_EQ(suggestion(bar, 40, on(13), {}, {}, {}), "");
    EXPECT_EQ(suggestion(bar, 13, on(90), {}, {}, {}), "");
    EXPECT_EQ(suggestion(bar, 14, {}, {}, {}, {}), "tucked. " + unused + "14 days");
    EXPECT_EQ(suggestion(bar, 40, {}, on(13), {}, {}), "");
    EXPECT_EQ(suggestion(bar, 40, on(-30), {}, {0, 3, 6}, {}), "");
    EXPECT_EQ(suggestion(tucked, 40, on(29), {}, {}, {}), "");
    EXPECT_EQ(suggestion(tucked, 40, on(30), {}, {}, {1, 1.9}), "buried. " + unused + "30 days");
    EXPECT_EQ(suggestion(tucked, 13, on(30), {}, {}, {}), "");
    EXPECT_EQ(suggestion(tucked, 0, {}, {}, {0, 3, 6}, {}), often);
    EXPECT_EQ(suggestion(tucked, 40, on(0), {}, {-1, 0, 3, 7}, {}), "");
    EXPECT_EQ(suggestion(buried, 0, {}, {}, {0, 3, 6}, {}), often);
    EXPECT_EQ(suggestion(buried, 90, on(90), {}, {0, 6}, {}), "");
    EXPECT_EQ(suggestion(bar, 20, {}, on(90), {}, large), "bar. Hogging 477 MB, and not clicked in 20 days");
    EXPECT_EQ(suggestion(buried, 14, on(14), {}, {}, {0, 2.0}),
              "buried. Hogging 0 MB · 2.0% CPU, and not clicked in 14 days");
    EXPECT_EQ(suggestion(buried, 13, on(90), {}, {}, large), "");
    EXPECT_EQ(suggestion(tucked, 40, on(13), {}, {0, 1, 2}, large), often);
    EXPECT_EQ(describe(TidySuggestion::Unused{1}), unused + "1 day");
    EXPECT_EQ(describe(TidySuggestion::Heavy{1, large}), "Hogging 477 MB, and not clicked in 1 day");
}

void expectSoundClickDays(const std::vector<Date>& days, Date date) {
    EXPECT_EQ(std::ranges::count(days, calendar.startOfDay(date)), 1);
    for (const Date day : days) {
        EXPECT_TRUE(std::ranges::count(days, day) == 1 && calendar.daysBetween(day, date) <= 20);
    }
}

TEST(Autopilot, CountsEachLocalDayOnceWhenClocksAndZonesChange) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random{seed};
    Layout layout;
    layout.newIconDefault = buried;
    layout.autopilot.watchingSince = now;
    std::vector<Date>& days = layout.clickDays["a"];
    for (int click = 0; click < 300; ++click) {
        const Date date = now + std::chrono::minutes{random() % 60'000};
        // The start of a day as it was noted in a zone up to half a day away from here.
        const Date elsewhere = calendar.startOfDay(date) + std::chrono::hours{random() % 25} - 12h;
        if (std::ranges::find(days, elsewhere) == days.end()) {
            days.push_back(elsewhere);
        }
        layout.recordClick("a", date, calendar);
        expectSoundClickDays(days, date);
        EXPECT_EQ(layout.lastClicked["a"], date);
        for (const auto& [app, change, reason] :
             Autopilot::suggestions({layout, {"a"}, {}, date, calendar})) {
            EXPECT_LE(std::get<TidySuggestion::UsedOften>(reason).days, 7);
        }
    }
}

TEST(Autopilot, IsNotSilencedByAClockThatWasAhead) {
    const auto datedBy = [](Date clock) {
        Layout layout;
        layout.lastClicked = layout.firstSeen = {{"a", clock}};
        layout.autopilot.watchingSince = layout.autopilot.lastOffered = clock;
        layout.knownGraceUntil = clock + 24h;
        layout.snooze("a", clock, calendar);
        layout.clickDays["a"] = {calendar.startOfDay(daysAgo(1)), calendar.startOfDay(clock)};
        return layout;
    };
    for (const auto ahead : {-9000h, 0h, 23h}) {
        Layout layout = datedBy(now + ahead);
        EXPECT_FALSE(layout.setBackDates(now, calendar)) << ahead.count();
        EXPECT_EQ(layout, datedBy(now + ahead));
    }
    Layout layout = datedBy(now + 9000h);
    layout.clickDays["a"].push_back(now + 9100h);
    EXPECT_TRUE(layout.setBackDates(now, calendar));
    EXPECT_EQ(layout, datedBy(now));
}

TEST(Autopilot, OffersAtMostOnceAWeekAndLeavesAloneWhatIsToBeLeftAlone) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random{seed};
    const auto oneIn = [&](unsigned count) { return random() % count == 0; };
    BundleIDs apps(AllowlistPlanner::alwaysAllowed.begin(), AllowlistPlanner::alwaysAllowed.end());
    apps.insert({"a", "b", "c", "d", "e", "f", "g", "kept", "new"});
    Layout layout;
    AutopilotState& state = layout.autopilot;
    layout.alwaysKeep = {"kept"};
    layout.inbox = {"new"};
    state.startWatchingIfNeeded(now);
    state.startWatchingIfNeeded(now + 1h);
    EXPECT_EQ(state.watchingSince, now);
    layout.hasCompletedSetup = true;
    EXPECT_TRUE(Autopilot::isOfferDue({layout, 1, now, calendar}));
    state.lastOffered = daysAgo(7);
    EXPECT_TRUE(Autopilot::isOfferDue({layout, 1, now, calendar}));
    std::size_t most = 0;
    int offers = 0;
    for (int day = 0; day < 365; ++day) {
        const Date date = calendar.addingDays(day, now) + std::chrono::minutes{random() % 500};
        for (const BundleID& app : apps) {
            if ((day + 11 * app.back()) / 40 % 2 == 0 && !oneIn(50)) {
                layout.recordClick(app, date, calendar);
                expectSoundClickDays(layout.clickDays[app], date);
                most = std::max(most, layout.clickDays[app].size());
            }
        }
        layout.hasCompletedSetup = !oneIn(5);
        state.enabled = !oneIn(5);
        const auto found = Autopilot::suggestions({layout, apps, {{"a", {0, 50.0}}}, date, calendar});
        if (Autopilot::isOfferDue({layout, found.size(), date, calendar})) {
            EXPECT_GE(calendar.daysBetween(*state.lastOffered, date), 7);
            EXPECT_TRUE(layout.hasCompletedSetup && state.enabled && !state.offerPending && !found.empty());
            state.lastOffered = date;
            state.offerPending = true;
            ++offers;
        }
        for (const auto& [app, change, reason] : found) {
            EXPECT_EQ(app.size(), 1U) << app;
            EXPECT_LE(state.snoozedUntil[app], date);
            EXPECT_NE(change, TidySuggestion::Change{TidySuggestion::MoveTo{layout.section(app)}});
            if (state.offerPending && !oneIn(3)) {
                layout.accept({app, change, reason});
                layout.snooze(app, date, calendar);
                EXPECT_EQ(calendar.dayDifference(date, state.snoozedUntil[app]), 30);
                state.offerPending = found.size() > 1;
            }
        }
    }
    EXPECT_EQ(most, 21U) << "click days of one app";
    EXPECT_GT(offers, 5);
}

}  // namespace
}  // namespace velko
