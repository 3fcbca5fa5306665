#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <vector>

#include "VelkoCore/Layout/Layout.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

const Date monday = std::chrono::sys_days{std::chrono::year{2026} / 3 / 2} + 8h;
const std::vector<BundleID> nobody;

/// A layout that knows "old" and has its setup done.
Layout known() {
    Layout layout;
    layout.hasCompletedSetup = true;
    layout.seenApps = BundleIDs{"old"};
    return layout;
}

std::vector<BundleID> admit(Layout& layout, const BundleIDs& present, Date now = monday) {
    return layout.admit({.present = present, .ownBundleID = "velko", .now = now});
}

TEST(Admission, TucksNewcomersInOrderUntilTheUserAnswers) {
    Layout layout = known();
    layout.inbox = {"zebra"};
    const auto newcomers = admit(
        layout, {"old", "new", "Another", "velko", "com.apple.MenuBarAgent", "com.apple.systemuiserver"});
    EXPECT_EQ(newcomers, (std::vector<BundleID>{"Another", "new"}));
    EXPECT_EQ(layout.inbox, (std::vector<BundleID>{"zebra", "Another", "new"}));
    EXPECT_EQ(layout.section("new"), Section::tucked);
    EXPECT_EQ(layout.firstSeen, (std::map<BundleID, Date>{{"Another", monday}, {"new", monday}}));
    EXPECT_EQ(*layout.seenApps, (BundleIDs{"Another", "new", "old"}));
    const Layout before = layout;
    EXPECT_EQ(admit(layout, {"new", "Another", "zebra"}, monday + 24h), nobody) << "each app is new once";
    EXPECT_EQ(layout.inbox, before.inbox);
    EXPECT_EQ(layout.firstSeen.at("new"), monday);
}

TEST(Admission, AsksAboutNobodyWhereNobodyIsToBeAsked) {
    using Change = std::function<void(Layout&)>;
    const std::vector<std::tuple<const char*, Change, std::vector<BundleID>>> cases{
        {"as a rule", [](Layout&) {}, {"new"}},
        {"setup not done", [](Layout& layout) { layout.hasCompletedSetup = false; }, {}},
        {"the user does not want it", [](Layout& layout) { layout.askAboutNewIcons = false; }, {}},
        {"sorted already", [](Layout& layout) { layout.sections["new"] = Section::bar; }, {}},
        {"waiting already", [](Layout& layout) { layout.inbox = {"new"}; }, {}},
        {"in the grace", [](Layout& layout) { layout.knownGraceUntil = monday + 1s; }, {}},
        {"at the end of the grace", [](Layout& layout) { layout.knownGraceUntil = monday; }, {"new"}},
    };
    for (const auto& [why, change, newcomers] : cases) {
        Layout layout = known();
        change(layout);
        EXPECT_EQ(admit(layout, {"new"}), newcomers) << why;
        EXPECT_TRUE(layout.seenApps->contains("new")) << why;
        EXPECT_EQ(layout.firstSeen.at("new"), monday) << why;
    }
}

TEST(Admission, TakesEverythingAsKnownInAnOlderBuildsLayout) {
    Layout layout = known();
    layout.seenApps.reset();
    layout.sections = {
        {"com.apple.MenuBarAgent", Section::bar}, {"sorted", Section::buried}, {"velko", Section::bar}};
    layout.inbox = {"waiting"};
    layout.firstSeen["present"] = monday - 72h;
    EXPECT_EQ(admit(layout, {"present", "sorted"}), nobody);
    EXPECT_EQ(*layout.seenApps, (BundleIDs{"present", "sorted", "waiting"}));
    EXPECT_EQ(layout.knownGraceUntil, monday + 24h);
    EXPECT_EQ(layout.firstSeen, (std::map<BundleID, Date>{{"present", monday - 72h}, {"sorted", monday}}));
    EXPECT_EQ(admit(layout, {"late"}, monday + 24h - 1s), nobody);
    EXPECT_EQ(admit(layout, {"later", "waiting"}, monday + 24h), (std::vector<BundleID>{"later"}));
}

TEST(Admission, ForgetsThoseThatWereAwayForAWeek) {
    const BundleID own = "app.velko.mac";
    const BundleIDs all{"a", "b", "old"};
    const BundleIDs rest{"b", "old"};
    Layout layout{.sections = {{"old", Section::bar}}, .hasCompletedSetup = true};
    layout.seenApps = BundleIDs{"old"};
    const Date start = Date(std::chrono::days(20000));
    const auto look = [&](const BundleIDs& present, std::chrono::hours later) {
        return layout.letAbsentGo({.present = present, .ownBundleID = own, .now = start + later});
    };
    layout.admit({.present = all, .ownBundleID = own, .now = start});
    EXPECT_TRUE(look(rest, 1h).empty());
    EXPECT_TRUE(look(all, 100h).empty());
    EXPECT_TRUE(layout.waitingGoneSince.empty()) << "it came back, and a week begins anew";
    EXPECT_TRUE(look(rest, 101h).empty());
    EXPECT_TRUE(look({}, 101h + 167h).empty());
    EXPECT_EQ(look({}, 101h + 168h), std::vector<BundleID>{"a"});
    EXPECT_EQ(layout.inbox, std::vector<BundleID>{"b"});
    EXPECT_EQ(layout.sections, (std::map<BundleID, Section>{{"b", Section::tucked}, {"old", Section::bar}}));
    EXPECT_EQ(layout.admit({.present = {"a"}, .ownBundleID = own, .now = start + 300h}),
              std::vector<BundleID>{"a"})
        << "when it comes again, it is new";
    layout.place("b", Section::bar);
    EXPECT_TRUE(layout.waitingGoneSince.empty());
}

}  // namespace
}  // namespace velko
