#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VelkoCore/Files/Json.h"
#include "VelkoCore/Keys/KeyCombination.h"

namespace velko {

/// What a key can do while any app is in front.
enum class HotKeyAction { toggle, toggleWithBuried, search, presenting };

/// What differs from action to action.
struct HotKeyRow {
    HotKeyAction action;
    std::string_view key;    ///< in the layout's file, in scenarios and in the log
    std::string_view title;  ///< in the settings
};

inline constexpr std::array hotKeyActions{
    HotKeyRow{.action = HotKeyAction::toggle, .key = "toggle", .title = "Show or tuck icons"},
    HotKeyRow{
        .action = HotKeyAction::toggleWithBuried, .key = "toggle-buried", .title = "Show buried icons too"},
    HotKeyRow{.action = HotKeyAction::search, .key = "search", .title = "Search the menu bar"},
    HotKeyRow{.action = HotKeyAction::presenting, .key = "presenting", .title = "Present, or stop"},
};

[[nodiscard]] const HotKeyRow& rowOf(HotKeyAction action) noexcept;

/// The keys that the user has chosen, as the layout's file has them: an object with an entry such as
/// {"key": 40, "modifiers": ["control", "option"]} for each action. Entries that make no sense, and those of
/// newer builds, stay in it untouched.
namespace HotKeySettings {

struct Found {
    std::map<HotKeyAction, KeyCombination> keys;
    std::vector<std::string> faults;  ///< what is wrong with the others, each in words that name the entry
};

/// Reads the entries. One that is wrong is left out and told of.
[[nodiscard]] Found read(const Json& settings);

/// The same settings with another key for an action, or without one.
[[nodiscard]] Json with(Json settings, HotKeyAction action, const std::optional<KeyCombination>& keys);

}  // namespace HotKeySettings

}  // namespace velko
