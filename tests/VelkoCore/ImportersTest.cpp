#include <gtest/gtest.h>
#include <limits>
#include <tuple>

#include "VelkoCore/Import/Importers.h"

namespace velko {
namespace {

using Dictionary = PropertyList::Dictionary;

PropertyList listOf(const std::vector<std::string>& texts) {
    PropertyList::Array array;
    for (const std::string& text : texts) {
        array.push_back({text});
    }
    return {array};
}

Dictionary profileWith(Dictionary lists) {
    return {{"ProfileSettings", {Dictionary{{"activeProfile", {std::move(lists)}}}}}};
}

TEST(Importers, GiveABartenderItemToTheAppThatOwnsIt) {
    const auto tucked = [](const BundleID& owner) {
        return std::map<BundleID, Section>{{owner, Section::tucked}};
    };
    const std::vector<std::tuple<std::string, BundleIDs, std::map<BundleID, Section>>> cases{
        {"com.example.app-Item-0", {"com.example.app"}, tucked("com.example.app")},
        {"com.example.app-Item-0", {}, tucked("com.example.app")},
        {"com.a.menu.1", {"com.a", "com.a.menu"}, tucked("com.a.menu")},
        {" \tcom.a\n", {"com.a"}, tucked("com.a")},
        {"com.a-Item-Item-0", {"other"}, tucked("com.a")},
        {"com.abc", {"com.a"}, {}},
        {"com.a", {"com.a.menu"}, {}},
        {"-Item-0", {}, {}},
        {"  ", {"com.a"}, {}},
        {"com.surteesstudios.x", {"com.surteesstudios.x"}, {}},
    };
    for (const auto& [item, known, expected] : cases) {
        const auto layout = Importers::bartender(profileWith({{"Hide", listOf({item})}}), known);
        EXPECT_EQ(layout.has_value(), !expected.empty()) << item;
        EXPECT_EQ(layout.value_or(ImportedLayout{}).sections, expected) << item;
    }
}

TEST(Importers, KeepTheMostHiddenOfBartendersPlacements) {
    const BundleIDs known{"a", "b", "c", "d"};
    const auto layout = Importers::bartender(profileWith({{"Show", listOf({"a", "b", "c"})},
                                                          {"Hide", listOf({"b", "c", "d"})},
                                                          {"AlwaysHide", listOf({"c"})}}),
                                             known);
    const std::map<BundleID, Section> expected{
        {"a", Section::bar}, {"b", Section::tucked}, {"c", Section::buried}, {"d", Section::tucked}};
    ASSERT_TRUE(layout);
    EXPECT_EQ(*layout, (ImportedLayout{"Bartender", expected, std::nullopt, std::nullopt}));
    const PropertyList mixed{PropertyList::Array{{std::string{"a"}}, {true}}};
    EXPECT_FALSE(Importers::bartender(profileWith({{"Show", mixed}, {"Hide", {std::string{"a"}}}}), known));
    EXPECT_FALSE(Importers::bartender({{"ProfileSettings", listOf({"a"})}}, known));
}

TEST(Importers, TurnDelaysIntoAutoTuckSeconds) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    using Seconds = std::optional<std::int64_t>;
    const std::vector<std::tuple<PropertyList, Seconds, Seconds>> cases{
        {{1.4}, 3, 3},
        {{0.0}, 0, 0},
        {{0.01}, 3, 3},
        {{7.5}, 8, 8},
        {{std::numeric_limits<std::int64_t>::max()}, 30, 30},
        {{infinite}, 30, 30},
        {{-infinite}, 0, 0},
        {{std::numeric_limits<double>::quiet_NaN()}, 6, std::nullopt},
        {{true}, 6, std::nullopt},
    };
    for (const auto& [interval, ice, vanilla] : cases) {
        const Dictionary preferences{
            {"AutoRehide", {true}}, {"RehideInterval", interval}, {"auto-collapse-interval", interval}};
        EXPECT_EQ(Importers::ice(preferences), (ImportedLayout{"Ice", {}, ice, std::nullopt}));
        EXPECT_EQ(Importers::vanilla(preferences), (ImportedLayout{"Vanilla", {}, vanilla, std::nullopt}));
    }
}

TEST(Importers, TakeFromIceWhatItSays) {
    const auto ice = [](const Dictionary& preferences) { return Importers::ice(preferences); };
    EXPECT_EQ(ice({{"AutoRehide", {true}}}), (ImportedLayout{"Ice", {}, 6, std::nullopt}));
    EXPECT_EQ(ice({{"AutoRehide", {false}}, {"RehideInterval", {9.0}}, {"ShowOnHover", {false}}}),
              (ImportedLayout{"Ice", {}, 0, false}));
    EXPECT_EQ(ice({{"AutoRehide", {std::int64_t{1}}}, {"ShowOnHover", {true}}}),
              (ImportedLayout{"Ice", {}, std::nullopt, true}));
    EXPECT_EQ(ice({{"AutoRehide", {std::int64_t{1}}}, {"ShowOnHover", {1.0}}}), std::nullopt);
}

}  // namespace
}  // namespace velko
