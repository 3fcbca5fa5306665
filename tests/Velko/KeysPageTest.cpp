#include <gtest/gtest.h>

#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "tests/Velko/SettingsOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class KeysPageTest : public SettingsOnMac {
 protected:
    void openKeys() { openPage(2); }
    void record(const std::string& id, const char* keys) {
        set(id);
        EXPECT_EQ(words(id).substr(words(id).rfind(',')), ", press the keys");
        set(id, Keys::parse(keys).value_or(KeyCombination()));
    }
    [[nodiscard]] std::string title(std::string_view id) {
        return std::get<view::KeyRecorder>(find(id)->content).title;
    }
};

TEST_F(KeysPageTest, RecordsKeysWithEscapeToCancelAndDeleteToClear) {
    startSettings();
    openKeys();
    EXPECT_EQ(title("key:search"), "Choose a Key…");
    record("key:search", "control+option+k");
    EXPECT_EQ(title("key:search"), "⌃⌥K");
    EXPECT_EQ(words("key:search"), "Search the menu bar, ⌃⌥K");
    EXPECT_EQ(mac.hotKeys.registered().size(), 1U);
    set("key:search");
    EXPECT_TRUE(mac.hotKeys.registered().empty()) << "the press must come here";
    set("key:search", KeyCombination{.key = Keys::escape});
    EXPECT_EQ(title("key:search"), "⌃⌥K");
    EXPECT_EQ(mac.hotKeys.registered().size(), 1U);
    record("key:search", "⌫");
    EXPECT_EQ(title("key:search"), "Choose a Key…");
    record("key:search", "control+option+k");
    set("clear:search");
    EXPECT_EQ(title("key:search"), "Choose a Key…");
    EXPECT_FALSE(find("clear:search")->isEnabled);
    EXPECT_FALSE(window().perform("key:search", KeyCombination{.key = 0})) << "it does not record now";
}

TEST_F(KeysPageTest, SaysInWordsWhyAKeyCannotBeHad) {
    startSettings();
    openKeys();
    record("key:toggle", "control+option+k");
    record("key:search", "control+option+k");
    EXPECT_EQ(words("why:search"), "⌃⌥K is already the key for “Show or tuck icons”.");
    EXPECT_EQ(mac.surfaces.announcements().back(), words("why:search"));
    record("key:search", "k");
    EXPECT_EQ(words("why:search"), "K is for typing. Hold ⌃, ⌥ or ⌘ as well.");
    mac.hotKeys.ofOthers.insert({.key = 37, .control = true});
    record("key:search", "control+l");
    EXPECT_EQ(words("why:search"), "⌃L is taken by another app.");
    record("key:search", "control+m");
    EXPECT_EQ(words("why:search"), "");
    mac.hotKeys.setLayout({{46, "ö"}});
    pass(1s);
    EXPECT_EQ(title("key:search"), "⌃Ö") << "in the keyboard layout of now";
}

TEST_F(KeysPageTest, StopsRecordingByItselfAndWhenTheUserGoesElsewhere) {
    startSettings();
    openKeys();
    record("key:toggle", "control+option+k");
    set("key:toggle");
    set("key:search");
    EXPECT_EQ(title("key:toggle"), "⌃⌥K");
    EXPECT_EQ(title("key:search"), "Press the Keys…");
    pass(11s);
    EXPECT_EQ(title("key:search"), "Choose a Key…");
    EXPECT_EQ(mac.hotKeys.registered().size(), 1U);
    for (const bool closes : {false, true}) {
        set("key:search");
        EXPECT_TRUE(mac.hotKeys.registered().empty());
        if (closes) {
            window().dismiss(Surface::Dismissal::closeButton);
        } else {
            openPage(0);
        }
        pass(1s);
        EXPECT_EQ(mac.hotKeys.registered().size(), 1U);
        settings->show();
        openKeys();
    }
}

TEST_F(KeysPageTest, IsLockedWhileTheLayoutCannotBeRead) {
    write("{");
    startWithFileAsItIs();
    openSettings();
    openKeys();
    for (const char* id : {"key:toggle", "clear:toggle", "search-in-menu"}) {
        EXPECT_FALSE(find(id)->isEnabled) << id;
    }
    EXPECT_NE(words("keys:locked"), "");
}

}  // namespace
}  // namespace velko
