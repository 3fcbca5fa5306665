#include <gtest/gtest.h>
#include <tuple>

#include "VelkoCore/Sorting/SortSession.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

const Date sortedAt = parseDate("2026-03-01T12:00:00Z").value();

SortSession sessionOf(const std::vector<SortSession::App>& apps,
                      const std::map<BundleID, Section>& current = {},
                      std::optional<std::string> importSource = {},
                      const std::map<BundleID, Date>& lastClicked = {}) {
    return SortSession{{.apps = apps,
                        .lastClicked = lastClicked,
                        .current = current,
                        .importSource = std::move(importSource),
                        .now = sortedAt,
                        .calendar = {}}};
}

TEST(SortSession, PutsWhatIsTakenOverBeforeClicksAndClicksBeforeTheKindOfApp) {
    const Date longAgo = sortedAt - 24h * 100;
    const SortSession session =
        sessionOf({{"z.placed", "Placed"}, {"vpn.clicked", "Clicked"}, {"a.VPN", "VPN"}},
                  {{"z.placed", Section::bar}}, "Ice", {{"z.placed", longAgo}, {"vpn.clicked", longAgo}});
    const std::vector<SortCard> expected{
        {"z.placed", "Placed", longAgo, {Section::bar, Suggestion::Imported{"Ice"}}},
        {"vpn.clicked", "Clicked", longAgo, {Section::buried, Suggestion::LastClicked{100}}},
        {"a.VPN", "VPN", std::nullopt, {Section::bar, Suggestion::AppType{}}}};
    EXPECT_EQ(session.cards(), expected);
    EXPECT_TRUE(session.choices().empty());
    const SortSession again = sessionOf({{"a", "A"}}, {{"a", Section::buried}});
    EXPECT_EQ(describe(again.current()->suggestion.reason), "From your current layout");
}

TEST(SortSession, KeepsAChoiceWhenSteppingBackUntilAnotherIsMade) {
    SortSession session = sessionOf({{"a", "A"}, {"b", "B"}, {"c", "C"}});
    session.back();
    EXPECT_EQ(session.index(), 0U);
    session.choose(Section::buried);
    session.back();
    EXPECT_EQ(session.current()->bundleID, "a");
    EXPECT_EQ(session.count(Section::buried), 1U);
    session.choose(Section::bar);
    EXPECT_EQ(session.count(Section::buried), 0U);
    const std::map<BundleID, Section> expected{
        {"a", Section::bar}, {"b", Section::tucked}, {"c", Section::tucked}};
    EXPECT_EQ(session.result(), expected);
    EXPECT_EQ(session.choices().size(), 1U);
}

TEST(SortSession, AcceptsTheRestFromTheCardNowShown) {
    SortSession session = sessionOf({{"a", "A"}, {"b.webex", "B"}, {"c", "C"}});
    session.choose(Section::buried);
    session.acceptRest();
    EXPECT_TRUE(session.isFinished());
    EXPECT_EQ(session.current(), nullptr);
    const std::map<BundleID, Section> expected{
        {"a", Section::buried}, {"b.webex", Section::bar}, {"c", Section::tucked}};
    EXPECT_EQ(session.choices(), expected);
    const SortSession finished = session;
    session.choose(Section::bar);
    session.acceptRest();
    EXPECT_EQ(session, finished);
    session.back();
    EXPECT_NE(session, finished);
    EXPECT_TRUE(sessionOf({}).isFinished());
}

TEST(Suggestions, SayWhyInTheWordsOfTheCard) {
    EXPECT_EQ(describe(Suggestion::LastClicked{0}), "Last clicked today");
    EXPECT_EQ(describe(Suggestion::LastClicked{1}), "Last clicked yesterday");
    EXPECT_EQ(describe(Suggestion::LastClicked{2}), "Last clicked 2 days ago");
    EXPECT_EQ(describe(Suggestion::Imported{"Bartender"}), "From Bartender");
    EXPECT_EQ(describe(Suggestion::AppType{}), "Suggested by app type");
}

TEST(Suggestions, GoByTheLocalDaysSinceTheLastClick) {
    const Calendar calendar;
    for (const auto& [days, counted, section] :
         {std::tuple(-40, 0, Section::bar), std::tuple(0, 0, Section::bar), std::tuple(1, 1, Section::tucked),
          std::tuple(30, 30, Section::tucked), std::tuple(31, 31, Section::buried)}) {
        const Suggestion expected{.section = section, .reason = Suggestion::LastClicked{counted}};
        const Date click = calendar.startOfDay(calendar.addingDays(-days, sortedAt));
        for (const Date moment : {click, click + 23h}) {
            EXPECT_EQ(Suggestions::suggest(
                          {.bundleID = "a", .lastClicked = moment, .now = sortedAt, .calendar = calendar}),
                      expected)
                << days;
        }
    }
}

TEST(Suggestions, KeepTunnelsPasswordsAndMeetingsInTheBar) {
    for (const auto* bundleID : {"com.nordvpn.macos.NordVPN", "com.wireguard.macos", "io.tailscale.ipn",
                                 "net.tunnelblick.tunnelblick", "net.MULLVAD.app", "com.agilebits.1Password7",
                                 "com.bitwarden.desktop", "com.lastpass.LastPass",
                                 "com.dashlane.dashlanephonefinal", "com.callpod.keepermac", "us.zoom.xos",
                                 "com.microsoft.teams2", "Cisco-Systems.Webex", "com.hnc.Discord"}) {
        EXPECT_EQ(Suggestions::byAppType(bundleID), Section::bar) << bundleID;
    }
    for (const auto* bundleID : {"com.example.app", "us.zoom.other", "com.microsoft.edge", "", "v.p.n"}) {
        EXPECT_EQ(Suggestions::byAppType(bundleID), Section::tucked) << bundleID;
    }
}

}  // namespace
}  // namespace velko
