#include <gtest/gtest.h>

#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "Velko/Flows/GlobalKeys.h"
#include "VelkoCore/Keys/HotKeySettings.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

KeyCombination keysCalled(const char* text) {
    return Keys::parse(text).value_or(KeyCombination());
}

class GlobalKeysTest : public VelkoOnMac {
 protected:
    GlobalKeysTest() {
        layout.reveal.autoTuckSeconds = 0;
        layout.hasCompletedSetup = true;
        launch("app.tucked", Section::tucked);
        launch("app.buried", Section::buried);
    }

    void press(const KeyCombination& keys) {
        mac.hotKeys.press(keys);
        pass(1s);
    }
    std::string set(HotKeyAction action, const std::optional<KeyCombination>& keys) {
        return velko->keys().set(action, keys).value_or("");
    }

    const KeyCombination k = keysCalled("control+option+k");
    const KeyCombination l = keysCalled("control+option+l");
};

TEST_F(GlobalKeysTest, DoWhatTheBroomDoesWhileAnyAppIsInFront) {
    start();
    EXPECT_TRUE(mac.hotKeys.registered().empty()) << "nobody has asked for a key";
    EXPECT_EQ(set(HotKeyAction::toggle, k), "");
    EXPECT_EQ(set(HotKeyAction::toggleWithBuried, l), "");
    press(k);
    EXPECT_TRUE(shows("app.tucked") && !shows("app.buried"));
    press(l);
    EXPECT_TRUE(shows("app.tucked") && shows("app.buried"));
    press(k);
    EXPECT_FALSE(shows("app.tucked") || shows("app.buried"));
    int searches = 0;
    velko->onSearchKey = [&searches] { ++searches; };
    EXPECT_EQ(set(HotKeyAction::search, keysCalled("f13")), "");
    press(keysCalled("f13"));
    EXPECT_EQ(searches, 1);
    {
        const Subscription paused = velko->keys().pause();
        EXPECT_TRUE(mac.hotKeys.registered().empty());
        EXPECT_NE(set(HotKeyAction::search, k), "") << "the key is only lent";
        EXPECT_EQ(set(HotKeyAction::search, keysCalled("f14")), "");
        EXPECT_TRUE(mac.hotKeys.registered().empty());
    }
    EXPECT_EQ(mac.hotKeys.registered(), (std::set{k, l, keysCalled("f14")}));
    EXPECT_EQ(set(HotKeyAction::toggle, std::nullopt), "");
    press(k);
    EXPECT_FALSE(shows("app.tucked"));
    EXPECT_TRUE(logged("[keys] toggle: ⌃⌥K") && logged("[keys] toggle: none"));
    EXPECT_EQ(HotKeySettings::read(saved().hotKeys).keys.size(), 2U);
    velko->quit();
    EXPECT_TRUE(mac.hotKeys.registered().empty());
}

TEST_F(GlobalKeysTest, SayInWordsWhyAKeyCannotBeHadAndKeepTheOneBefore) {
    start();
    EXPECT_EQ(set(HotKeyAction::toggle, k), "");
    EXPECT_EQ(set(HotKeyAction::search, k), "⌃⌥K is already the key for “Show or tuck icons”.");
    mac.hotKeys.ofOthers.insert(l);
    EXPECT_EQ(set(HotKeyAction::toggle, l), "⌃⌥L is taken by another app.");
    mac.hotKeys.ofSystem.insert(keysCalled("command+space"));
    EXPECT_EQ(set(HotKeyAction::toggle, keysCalled("command+space")),
              "⌘Space is a shortcut of macOS. You can switch that off in System Settings.");
    EXPECT_EQ(set(HotKeyAction::toggle, keysCalled("shift+k")), "⇧K is for typing. Hold ⌃, ⌥ or ⌘ as well.");
    // In this layout the key right of the L types another letter.
    mac.hotKeys.setLayout({{41, "ö"}, {0, "q"}});
    EXPECT_EQ(set(HotKeyAction::toggle, KeyCombination{.key = 41}),
              "Ö is for typing. Hold ⌃, ⌥ or ⌘ as well.");
    EXPECT_EQ(set(HotKeyAction::toggle, KeyCombination{.key = 0, .command = true}),
              "⌘Q means something in every app. Hold another key as well.");
    mac.hotKeys.fails = true;
    EXPECT_EQ(set(HotKeyAction::toggle, keysCalled("f13")), "macOS does not give F13 to Velko.");
    mac.hotKeys.fails = false;
    EXPECT_EQ(velko->keys().keysOf(HotKeyAction::toggle), k);
    EXPECT_EQ(mac.hotKeys.registered(), std::set{k});
    EXPECT_EQ(saved().hotKeys, HotKeySettings::with({}, HotKeyAction::toggle, k));
}

TEST_F(GlobalKeysTest, LeaveOutAWrongEntryOfTheFileWithALineAndDoNotLoseIt) {
    write(R"({"hasCompletedSetup": true, "hotKeys": {
        "toggle": {"key": "k"}, "toggle-buried": {"key": 40}, "newer": {"key": 1},
        "search": {"key": 40, "modifiers": ["control", "option"]}}})");
    startWithFileAsItIs();
    EXPECT_EQ(mac.hotKeys.registered(), std::set{k});
    EXPECT_TRUE(logged("[keys] ignored: hotKeys.toggle: key: expected a number from 0 to 127"));
    EXPECT_TRUE(logged("[keys] no key for toggle-buried: K is for typing."));
    EXPECT_EQ(values().keyFaults.size(), 1U);
    const Json before = values().layout.hotKeys;
    velko->place("app.tucked", Section::bar);
    EXPECT_EQ(saved().hotKeys, before);
    // The file is edited by hand while Velko runs.
    write(R"({"hasCompletedSetup": true, "hotKeys": "none"})");
    velko->loadLayout();
    EXPECT_TRUE(mac.hotKeys.registered().empty());
    EXPECT_TRUE(logged("[keys] ignored: hotKeys: expected an object"));
}

TEST_F(GlobalKeysTest, TakeAKeyThatWasTakenBeforeWithTheNextLoad) {
    layout.hotKeys = HotKeySettings::with({}, HotKeyAction::search, k);
    mac.hotKeys.ofOthers.insert(k);
    start();
    EXPECT_EQ(values().keyFaults.at(HotKeyAction::search), "⌃⌥K is taken by another app.");
    mac.hotKeys.ofOthers.clear();
    EXPECT_EQ(set(HotKeyAction::search, k), "") << "the same one is tried again";
    EXPECT_TRUE(values().keyFaults.empty());
    EXPECT_EQ(mac.hotKeys.registered(), std::set{k});
}

}  // namespace
}  // namespace velko
