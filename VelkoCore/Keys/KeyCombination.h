#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velko {

/// A key's place on the keyboard, as macOS numbers it: the same key has the same number in every keyboard
/// layout. Less than 128.
using KeyCode = std::uint16_t;

/// A key that is pressed together with others.
struct KeyCombination {
    static constexpr KeyCode lastKey = 127;

    KeyCode key = 0;
    bool control = false;
    bool option = false;
    bool shift = false;
    bool command = false;

    auto operator<=>(const KeyCombination&) const = default;

    [[nodiscard]] constexpr bool isPlain() const noexcept {
        return !control && !option && !shift && !command;
    }
};

/// What people call keys, and which they may take for themselves. Pure functions.
namespace Keys {

inline constexpr KeyCode tab = 48;
inline constexpr KeyCode deleteBackwards = 51;
inline constexpr KeyCode escape = 53;
inline constexpr KeyCode deleteForwards = 117;

/// One of the keys that are held while another one is pressed.
struct HeldKey {
    std::string_view name;  ///< in files and in scenarios
    std::string_view sign;
    bool KeyCombination::* member;
};

/// All of them, in the order in which the system writes their signs.
inline constexpr std::array heldKeys{
    HeldKey{.name = "control", .sign = "⌃", .member = &KeyCombination::control},
    HeldKey{.name = "option", .sign = "⌥", .member = &KeyCombination::option},
    HeldKey{.name = "shift", .sign = "⇧", .member = &KeyCombination::shift},
    HeldKey{.name = "command", .sign = "⌘", .member = &KeyCombination::command},
};

/// The signs of the keys that are held, in the order of the system: "⌃⌥⇧⌘".
[[nodiscard]] std::string signsOfHeld(const KeyCombination& keys);

/// The name of a key that is called the same in every keyboard layout, such as "F5", "Space" or "↩". Nothing
/// for a key that types what the layout says.
[[nodiscard]] std::optional<std::string_view> fixedName(KeyCode key) noexcept;

/// What a key types in the layout of the United States, as a capital: "K", "[". Nothing for a key that types
/// nothing there.
[[nodiscard]] std::optional<std::string_view> usualName(KeyCode key) noexcept;

/// The combination that is written like "control+option+k", with the names of the United States' layout and
/// in small letters. Nothing for what is no combination.
[[nodiscard]] std::optional<KeyCombination> parse(std::string_view text);

/// Whether it is one of F1 to F20, which type nothing.
[[nodiscard]] bool isFunctionKey(KeyCode key) noexcept;

/// Why nobody should take that combination from all other apps, in words for people; nothing if they may.
/// `name` is what the key is called in the present layout.
[[nodiscard]] std::optional<std::string> whyForbidden(const KeyCombination& keys, std::string_view name);

}  // namespace Keys

}  // namespace velko
