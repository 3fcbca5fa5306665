#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <vector>

#include "VelkoCore/Keys/HotKeySettings.h"
#include "VelkoCore/Layout/LayoutFormats.h"

namespace velko {
namespace {

constexpr KeyCombination controlOptionK{.key = 40, .control = true, .option = true};

TEST(HotKeySettings, KeepWhatTheyDoNotUnderstandAndTellOfWhatIsWrong) {
    // The entry for "search", and what is wrong with it.
    const std::vector<std::pair<std::string, std::string>> rows{
        {R"({"key": 40, "modifiers": ["control", "option"]})", ""},
        {R"({"key": 40, "modifiers": ["option", "control", "option"], "newer": 1})", ""},
        {"null", ""},
        {"40", "hotKeys.search: expected an object"},
        {R"({"modifiers": ["control"]})", "hotKeys.search: key: expected a number from 0 to 127"},
        {R"({"key": 128})", "hotKeys.search: key: expected a number from 0 to 127"},
        {R"({"key": -1})", "hotKeys.search: key: expected a number from 0 to 127"},
        {R"({"key": 40.5})", "hotKeys.search: key: expected a number from 0 to 127"},
        {R"({"key": 40, "modifiers": "control"})", "hotKeys.search: modifiers: expected a list"},
        {R"({"key": 40, "modifiers": ["fn"]})",
         R"(hotKeys.search: modifiers: expected "control", "option", "shift" or "command")"},
    };
    for (const auto& [entry, fault] : rows) {
        const std::string text =
            R"({"hotKeys": {"newer": [1], "search": )" + entry + R"(, "toggle": {"key": 96}}})";
        const auto layout = decodeLayout(text);
        ASSERT_TRUE(layout) << text;
        const auto found = HotKeySettings::read(layout->hotKeys);
        EXPECT_EQ(found.faults, fault.empty() ? std::vector<std::string>{} : std::vector{fault});
        EXPECT_EQ(found.keys.contains(HotKeyAction::search), fault.empty() && entry != "null") << entry;
        EXPECT_EQ(found.keys.at(HotKeyAction::toggle), KeyCombination{.key = 96});
        EXPECT_EQ(decodeLayout(encodeLayout(*layout))->hotKeys, layout->hotKeys) << "it was lost";

        const Json changed = HotKeySettings::with(layout->hotKeys, HotKeyAction::search, controlOptionK);
        EXPECT_EQ(HotKeySettings::read(changed).keys.at(HotKeyAction::search), controlOptionK);
        EXPECT_TRUE(std::get<Json::Object>(changed.value).contains("newer"));
    }
    EXPECT_EQ(HotKeySettings::read({std::string("control+k")}).faults,
              std::vector<std::string>{"hotKeys: expected an object"});
    const Json one = HotKeySettings::with({}, HotKeyAction::search, controlOptionK);
    EXPECT_TRUE(HotKeySettings::with(one, HotKeyAction::search, std::nullopt).isNull());
}

TEST(HotKeySettings, DoNotTravelToAnotherMac) {
    Layout layout;
    layout.hotKeys = HotKeySettings::with({}, HotKeyAction::search, controlOptionK);
    EXPECT_FALSE(LayoutExport::of(layout).data().contains("hotKeys"));
    layout.apply(LayoutExport::of(Layout()));
    EXPECT_FALSE(layout.hotKeys.isNull()) << "an import takes them away";
}

TEST(Keys, AreWrittenAndForbiddenAsPeopleExpect) {
    const std::vector<std::tuple<std::string, std::string, bool>> rows{
        {"control+option+k", "⌃⌥K", true},
        {"command+shift+option+control+f5", "⌃⌥⇧⌘F5", true},
        {"f13", "F13", true},
        {"option+space", "⌥Space", true},
        {"k", "K", false},
        {"shift+space", "⇧Space", false},
        {"command+q", "⌘Q", false},
        {"shift+command+z", "⇧⌘Z", false},
        {"option+command+q", "⌥⌘Q", true},
        {"command+k", "⌘K", true},
        {"command+⇥", "⌘⇥", false},
        {"control+⎋", "⌃⎋", false},
    };
    for (const auto& [text, shown, isAllowed] : rows) {
        const auto keys = Keys::parse(text);
        ASSERT_TRUE(keys) << text;
        const auto fixed = Keys::fixedName(keys->key);
        const std::string name(fixed ? *fixed : Keys::usualName(keys->key).value_or(""));
        EXPECT_EQ(Keys::signsOfHeld(*keys) + name, shown);
        EXPECT_EQ(!Keys::whyForbidden(*keys, name), isAllowed) << text;
    }
    for (const char* text : {"", "control+", "hyper+k", "control+kk"}) {
        EXPECT_FALSE(Keys::parse(text)) << text;
    }
    // What a key is called decides, and not where it is: A and Q change places in France.
    EXPECT_TRUE(Keys::whyForbidden({.key = 0, .command = true}, "Q"));
}

}  // namespace
}  // namespace velko
