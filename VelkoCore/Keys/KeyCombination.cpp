#include "VelkoCore/Keys/KeyCombination.h"

#include <algorithm>
#include <array>
#include <span>

namespace velko::Keys {

namespace {

struct NamedKey {
    KeyCode key;
    std::string_view name;
};

constexpr auto fixedNames = std::to_array<NamedKey>({{36, "↩"},
                                                     {tab, "⇥"},
                                                     {49, "Space"},
                                                     {deleteBackwards, "⌫"},
                                                     {escape, "⎋"},
                                                     {64, "F17"},
                                                     {71, "⌧"},
                                                     {76, "⌤"},
                                                     {79, "F18"},
                                                     {80, "F19"},
                                                     {90, "F20"},
                                                     {96, "F5"},
                                                     {97, "F6"},
                                                     {98, "F7"},
                                                     {99, "F3"},
                                                     {100, "F8"},
                                                     {101, "F9"},
                                                     {103, "F11"},
                                                     {105, "F13"},
                                                     {106, "F16"},
                                                     {107, "F14"},
                                                     {109, "F10"},
                                                     {111, "F12"},
                                                     {113, "F15"},
                                                     {115, "↖"},
                                                     {116, "⇞"},
                                                     {deleteForwards, "⌦"},
                                                     {118, "F4"},
                                                     {119, "↘"},
                                                     {120, "F2"},
                                                     {121, "⇟"},
                                                     {122, "F1"},
                                                     {123, "←"},
                                                     {124, "→"},
                                                     {125, "↓"},
                                                     {126, "↑"}});

constexpr auto usualNames = std::to_array<NamedKey>(
    {{0, "A"},  {1, "S"},   {2, "D"},  {3, "F"},  {4, "H"},  {5, "G"},  {6, "Z"},  {7, "X"},
     {8, "C"},  {9, "V"},   {10, "§"}, {11, "B"}, {12, "Q"}, {13, "W"}, {14, "E"}, {15, "R"},
     {16, "Y"}, {17, "T"},  {18, "1"}, {19, "2"}, {20, "3"}, {21, "4"}, {22, "6"}, {23, "5"},
     {24, "="}, {25, "9"},  {26, "7"}, {27, "-"}, {28, "8"}, {29, "0"}, {30, "]"}, {31, "O"},
     {32, "U"}, {33, "["},  {34, "I"}, {35, "P"}, {37, "L"}, {38, "J"}, {39, "'"}, {40, "K"},
     {41, ";"}, {42, "\\"}, {43, ","}, {44, "/"}, {45, "N"}, {46, "M"}, {47, "."}, {50, "`"}});

constexpr bool isAscending(std::span<const NamedKey> names) noexcept {
    return std::ranges::is_sorted(names, {}, &NamedKey::key);
}
static_assert(isAscending(fixedNames) && isAscending(usualNames));

std::optional<std::string_view> nameIn(std::span<const NamedKey> names, KeyCode key) noexcept {
    const auto found = std::ranges::lower_bound(names, key, {}, &NamedKey::key);
    return found != names.end() && found->key == key ? std::optional(found->name) : std::nullopt;
}

/// The keys that mean the same with Command in every app.
constexpr auto keysOfEveryApp = std::to_array<std::string_view>(
    {"A", "C", "F", "H", "M", "N", "O", "P", "Q", "S", "T", "V", "W", "X", "Z", ",", "⇥"});

}  // namespace

std::string signsOfHeld(const KeyCombination& keys) {
    std::string signs;
    for (const HeldKey& held : heldKeys) {
        signs += keys.*(held.member) ? held.sign : "";
    }
    return signs;
}

std::optional<std::string_view> fixedName(KeyCode key) noexcept {
    return nameIn(fixedNames, key);
}

std::optional<std::string_view> usualName(KeyCode key) noexcept {
    return nameIn(usualNames, key);
}

std::optional<KeyCombination> parse(std::string_view text) {
    KeyCombination keys;
    for (auto plus = text.find('+'); plus != std::string_view::npos && plus > 0; plus = text.find('+')) {
        const auto* const held = std::ranges::find(heldKeys, text.substr(0, plus), &HeldKey::name);
        if (held == heldKeys.end()) {
            return std::nullopt;
        }
        keys.*(held->member) = true;
        text.remove_prefix(plus + 1);
    }
    for (const std::span<const NamedKey> names :
         {std::span<const NamedKey>(fixedNames), std::span<const NamedKey>(usualNames)}) {
        for (const NamedKey& named : names) {
            const bool isIt = std::ranges::equal(named.name, text, [](char big, char small) {
                return big == small || (big >= 'A' && big <= 'Z' && big - 'A' + 'a' == small);
            });
            if (isIt) {
                keys.key = named.key;
                return keys;
            }
        }
    }
    return std::nullopt;
}

bool isFunctionKey(KeyCode key) noexcept {
    const auto name = fixedName(key);
    return name && name->size() > 1 && name->front() == 'F';
}

std::optional<std::string> whyForbidden(const KeyCombination& keys, std::string_view name) {
    const std::string shown = signsOfHeld(keys) + std::string(name);
    if (isFunctionKey(keys.key)) {
        return std::nullopt;
    }
    if (!keys.control && !keys.option && !keys.command) {
        return shown + " is for typing. Hold ⌃, ⌥ or ⌘ as well.";
    }
    if (keys.key == escape) {
        return shown + " is how people get out of things. Choose another key.";
    }
    const bool isOfEveryApp = keys.command && !keys.control && !keys.option &&
                              std::ranges::find(keysOfEveryApp, name) != keysOfEveryApp.end();
    return isOfEveryApp ? std::optional(shown + " means something in every app. Hold another key as well.")
                        : std::nullopt;
}

}  // namespace velko::Keys
