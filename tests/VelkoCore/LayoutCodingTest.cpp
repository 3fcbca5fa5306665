#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "VelkoCore/Layout/LayoutFormats.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

const std::vector<std::string> allKeys{
    "alwaysKeep",      "askAboutNewIcons",  "autopilot",        "clickDays",
    "firstSeen",       "hasCompletedSetup", "hotKeys",          "inbox",
    "knownGraceUntil", "lastClicked",       "leaveNewIconsOut", "neverPopOut",
    "quietUntil",      "newIconDefault",    "popOutOnChange",   "reveal",
    "searchInMenu",    "sections",          "seenApps",         "showLiveActivities",
    "version",         "setupPutOff",       "waitingGoneSince", "shelfWhenFull",
    "showAllFromWidth"};

/// Keys that older builds did not have: a wrong value disables only itself.
const std::set<std::string> additions{"leaveNewIconsOut", "neverPopOut",   "quietUntil",      "searchInMenu",
                                      "waitingGoneSince", "shelfWhenFull", "showAllFromWidth"};

Layout decoded(const std::string& json) {
    const auto layout = decodeLayout(json);
    EXPECT_TRUE(layout) << json << "\n" << (layout ? "" : layout.error().description);
    return layout.value_or(Layout{.version = -1});
}

TEST(Layout, TakesAFixedDefaultForEveryMissingOrNullKey) {
    const Layout empty = decoded("{}");
    EXPECT_EQ(encodeLayout(empty), R"({
  "alwaysKeep": [],
  "askAboutNewIcons": true,
  "autopilot": {
    "enabled": true,
    "offerPending": false,
    "snoozedUntil": {}
  },
  "clickDays": {},
  "firstSeen": {},
  "hasCompletedSetup": false,
  "inbox": [],
  "lastClicked": {},
  "newIconDefault": "bar",
  "popOutOnChange": true,
  "reveal": {
    "autoTuckSeconds": 6,
    "hover": false,
    "notchedStyle": "shelf",
    "otherStyle": "inline"
  },
  "sections": {},
  "showLiveActivities": true,
  "version": 1
}
)");
    EXPECT_EQ(decoded(R"({"reveal": {}, "autopilot": {}, "unknown": [1, {}]})"), empty);
    for (const std::string& key : allKeys) {
        EXPECT_EQ(decoded("{\"" + key + "\": null}"), empty) << key;
    }
    for (const std::string key : {"autoTuckSeconds", "notchedStyle", "otherStyle", "hover"}) {
        EXPECT_EQ(decoded("{\"reveal\": {\"" + key + "\": null}}"), empty) << key;
    }
    for (const std::string key :
         {"enabled", "watchingSince", "lastOffered", "offerPending", "snoozedUntil"}) {
        EXPECT_EQ(decoded("{\"autopilot\": {\"" + key + "\": null}}"), empty) << key;
    }
    Layout fresh = empty;
    fresh.seenApps.emplace();
    EXPECT_EQ(Layout{}, fresh);
}

TEST(Layout, CountsAnOlderFileAsSetUpOnceItSortsAnApp) {
    EXPECT_FALSE(decoded(R"({"sections": {}})").hasCompletedSetup);
    EXPECT_TRUE(decoded(R"({"sections": {"a": "bar"}})").hasCompletedSetup);
    EXPECT_TRUE(decoded(R"({"hasCompletedSetup": null, "sections": {"a": "bar"}})").hasCompletedSetup);
    EXPECT_FALSE(decoded(R"({"hasCompletedSetup": false, "sections": {"a": "bar"}})").hasCompletedSetup);
    EXPECT_TRUE(decoded(R"({"hasCompletedSetup": true})").hasCompletedSetup);
}

TEST(Layout, NormalisesTheAutoTuckTimeAndWhoWaits) {
    struct Case {
        std::string seconds;
        std::int64_t expected;
    };
    for (const auto& [seconds, expected] : std::vector<Case>{{"-9223372036854775808", 0},
                                                             {"-5", 0},
                                                             {"0", 0},
                                                             {"1", 3},
                                                             {"2", 3},
                                                             {"3", 3},
                                                             {"12", 12},
                                                             {"12.0", 12},
                                                             {"1.2e1", 12},
                                                             {"30", 30},
                                                             {"31", 30},
                                                             {"90", 30},
                                                             {"9223372036854775807", 30}}) {
        EXPECT_EQ(decoded(R"({"reveal": {"autoTuckSeconds": )" + seconds + "}}").reveal.autoTuckSeconds,
                  expected)
            << seconds;
    }
    EXPECT_EQ(decoded(R"({"inbox": ["a", "b", "a"]})").inbox, (std::vector<BundleID>{"a", "b"}));
    EXPECT_EQ(decoded(R"({"showAllFromWidth": 1})").showAllFromWidth, 1);
    for (const std::string width : {"0", "-9223372036854775808"}) {
        EXPECT_EQ(decoded(R"({"showAllFromWidth": )" + width + "}").showAllFromWidth, std::nullopt) << width;
    }
}

TEST(Layout, NamesTheKeyOfAWrongValue) {
    struct Case {
        std::string json;
        std::string error;
    };
    const std::vector<Case> cases{
        {"[]", "expected an object, found a list"},
        {"null", "expected an object, found null"},
        {R"({"version": true})", "version: expected a whole number, found true or false"},
        {R"({"version": "1"})", "version: expected a whole number, found a text"},
        {R"({"version": 6.5})", "version: expected a whole number, found a fraction"},
        {R"({"version": 9223372036854775808})", "version: the number is out of range"},
        {R"({"version": -9223372036854775809})", "version: the number is out of range"},
        {R"({"version": 1e300})", "version: the number is out of range"},
        {R"({"sections": []})", "sections: expected an object, found a list"},
        {R"({"sections": {"com.example.app": "Bar"}})",
         R"(sections.com.example.app: expected "bar", "tucked" or "buried", found "Bar")"},
        {R"({"sections": {"a": null}})", R"(sections.a: expected "bar", "tucked" or "buried", found null)"},
        {R"({"newIconDefault": 0})",
         R"(newIconDefault: expected "bar", "tucked" or "buried", found a number)"},
        {R"({"reveal": {"hover": 1}})", "reveal.hover: expected true or false, found a number"},
        {R"({"reveal": {"otherStyle": "inline_"}})",
         R"(reveal.otherStyle: expected "inline" or "shelf", found "inline_")"},
        {R"({"reveal": {"notchedStyle": false}})",
         R"(reveal.notchedStyle: expected "inline" or "shelf", found true or false)"},
        {R"({"hasCompletedSetup": "true"})", "hasCompletedSetup: expected true or false, found a text"},
        {R"({"inbox": {}})", "inbox: expected a list, found an object"},
        {R"({"inbox": ["a", 2]})", "inbox[1]: expected a text, found a number"},
        {R"({"seenApps": "a"})", "seenApps: expected a list, found a text"},
        {R"({"lastClicked": {"a": 1772357400}})",
         "lastClicked.a: expected a date such as 2026-03-01T09:30:00Z, found a number"},
        {R"({"clickDays": {"a": ["2026-03-01T00:00:00Z", "yesterday\n"]}})",
         "clickDays.a[1]: expected a date such as 2026-03-01T09:30:00Z, found \"yesterday?\""},
        {R"({"autopilot": {"snoozedUntil": {"b": {}}}})",
         "autopilot.snoozedUntil.b: expected a date such as 2026-03-01T09:30:00Z, found an object"},
        {R"({"sections": {")" + std::string(79, 'k') + R"(é": 1}})",
         "sections." + std::string(79, 'k') + R"(…: expected "bar", "tucked" or "buried", found a number)"},
    };
    for (const auto& [json, error] : cases) {
        const auto layout = decodeLayout(json);
        ASSERT_FALSE(layout) << json;
        EXPECT_EQ(layout.error().description, error) << json;
    }
    for (const std::string& key : allKeys) {
        if (key == "hotKeys") {
            continue;  // a wrong key disables only itself
        }
        if (additions.contains(key)) {
            std::vector<DecodingError> ignored;
            const auto layout = decodeLayout("{\"" + key + R"(": "no", "inbox": ["a"]})", &ignored);
            ASSERT_TRUE(layout) << key;
            Layout expected = decoded(R"({"inbox": ["a"]})");
            expected.unread = layout->unread;
            EXPECT_EQ(*layout, expected) << key;
            EXPECT_EQ(decodeLayout(encodeLayout(*layout)), layout) << key << " was lost";
            ASSERT_EQ(ignored.size(), 1U) << key;
            EXPECT_TRUE(ignored.front().description.starts_with(key + ": expected "));
            continue;
        }
        const bool isFlag = decodeLayout("{\"" + key + "\": true}").has_value();
        const auto layout = decodeLayout("{\"" + key + (isFlag ? "\": 0}" : "\": true}"));
        ASSERT_FALSE(layout) << key;
        EXPECT_TRUE(layout.error().description.starts_with(key + ": expected "))
            << layout.error().description;
    }
}

/// Random values of everything that a layout can hold.
class RandomLayouts {
    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>{0, limit - 1}(random_);
    }
    bool coin() { return below(2) == 0; }
    std::int64_t whole() {
        return std::uniform_int_distribution<std::int64_t>{INT64_MIN, INT64_MAX}(random_);
    }
    Section section() { return allSections.at(below(allSections.size())); }

    Date date() {
        return earliestDate + std::chrono::seconds{std::uniform_int_distribution<std::int64_t>{
                                  0, (latestDate - earliestDate).count()}(random_)};
    }

    BundleID name() {
        static const std::vector<std::string> pieces{
            "com.example",        ".",      "é", "日本",  "🧹", "\"", "\\", "\n",
            std::string(1, '\0'), "\u2028", " ", "hover", ""};
        BundleID result;
        for (std::size_t piece = below(5); piece > 0; --piece) {
            result += pieces.at(below(pieces.size()));
        }
        return result;
    }

    BundleIDs names() {
        BundleIDs result;
        std::generate_n(std::inserter(result, result.end()), below(5), [&] { return name(); });
        return result;
    }

    template <class Make>
    auto map(Make make) {
        std::map<BundleID, decltype(make())> result;
        for (std::size_t entry = below(5); entry > 0; --entry) {
            result[name()] = make();
        }
        return result;
    }

    std::mt19937 random_;

 public:
    explicit RandomLayouts(unsigned seed) : random_(seed) {}

    Layout next() {
        Layout layout{.version = whole(), .sections = map([&] { return section(); })};
        layout.newIconDefault = section();
        layout.reveal = {.autoTuckSeconds = RevealSettings::normalisedAutoTuck(whole() % 40),
                         .notchedStyle = coin() ? RevealStyle::shelf : RevealStyle::inline_,
                         .otherStyle = coin() ? RevealStyle::shelf : RevealStyle::inline_,
                         .hover = coin()};
        layout.lastClicked = map([&] { return date(); });
        layout.hasCompletedSetup = coin();
        layout.setupPutOff = coin() ? std::optional{date()} : std::nullopt;
        layout.askAboutNewIcons = coin();
        layout.seenApps = coin() ? std::optional{names()} : std::nullopt;
        const BundleIDs waiting = names();
        layout.inbox.assign(waiting.rbegin(), waiting.rend());
        for (const BundleID& bundleID : waiting) {
            if (coin()) {
                layout.waitingGoneSince[bundleID] = date();
            }
        }
        layout.firstSeen = map([&] { return date(); });
        layout.knownGraceUntil = coin() ? std::optional{date()} : std::nullopt;
        layout.clickDays = map([&] { return std::vector<Date>(below(4), date()); });
        layout.alwaysKeep = names();
        layout.autopilot = {.enabled = coin(),
                            .watchingSince = coin() ? std::optional{date()} : std::nullopt,
                            .lastOffered = coin() ? std::optional{date()} : std::nullopt,
                            .offerPending = coin(),
                            .snoozedUntil = map([&] { return date(); })};
        layout.popOutOnChange = coin();
        layout.showLiveActivities = coin();
        layout.leaveNewIconsOut = coin();
        layout.searchInMenu = coin();
        layout.shelfWhenFull = coin();
        layout.showAllFromWidth = coin() ? std::optional(1 + (whole() & INT64_MAX) / 2) : std::nullopt;
        layout.neverPopOut = names();
        layout.quietUntil = map([&] { return date(); });
        return layout;
    }
};

TEST(Layout, ComesBackEqualFromItsOwnText) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomLayouts layouts{seed};
    for (int round = 0; round < 500; ++round) {
        const Layout layout = layouts.next();
        const std::string text = encodeLayout(layout);
        ASSERT_EQ(decoded(text), layout) << text;
        ASSERT_EQ(layout.seenApps.has_value(), text.find("\n  \"seenApps\": ") != std::string::npos) << text;
    }
}

TEST(Layout, IsNotReadFromTruncatedOrScrambledText) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random{seed};
    const std::string whole = encodeLayout(RandomLayouts{seed}.next());
    for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
        ASSERT_FALSE(decodeLayout(std::string_view{whole}.substr(0, length))) << length;
    }
    for (int round = 0; round < 2000; ++round) {
        std::string scrambled = whole;
        scrambled.at(random() % scrambled.size()) = static_cast<char>(random());
        if (const auto layout = decodeLayout(scrambled)) {
            ASSERT_EQ(decoded(encodeLayout(*layout)), *layout) << scrambled;
        }
    }
}

TEST(Layout, PlacesAnAppAndTakesItOutOfTheInbox) {
    Layout layout{.newIconDefault = Section::tucked, .inbox = {"a", "b", "a"}};
    EXPECT_EQ(layout.section("a"), Section::tucked);
    layout.place("a", Section::buried);
    layout.place("a", Section::bar);
    EXPECT_EQ(layout.section("a"), Section::bar);
    EXPECT_EQ(layout.inbox, std::vector<BundleID>{"b"});
}

}  // namespace
}  // namespace velko
