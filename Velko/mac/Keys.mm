#import "Velko/mac/Keys.h"

#include <string>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

constexpr unichar enterOnKeypad = 0x03;
constexpr unichar escapeKey = 0x1B;
constexpr unichar leftArrow = 0xF702;

bool isOwn(unichar key) {
    return (key >= 'a' && key <= 'z') || (key >= '0' && key <= '9');
}

std::optional<view::Shortcut> shortcut(unichar key) {
    using Key = view::Shortcut::Key;
    switch (key) {
        case '\r':
        case enterOnKeypad:
            return view::Shortcut{.key = Key::enter};
        case escapeKey:
            return view::Shortcut{.key = Key::escape};
        case leftArrow:
            return view::Shortcut{.key = Key::leftArrow};
        default:
            break;
    }
    return isOwn(key)
               ? std::optional(view::Shortcut{.key = Key::character, .character = static_cast<char>(key)})
               : std::nullopt;
}

}  // namespace

std::optional<view::Shortcut> shortcutOf(NSEvent* event) {
    NSString* characters = event.charactersIgnoringModifiers;
    const NSEventModifierFlags others =
        NSEventModifierFlagCommand | NSEventModifierFlagControl | NSEventModifierFlagOption;
    if (characters.length != 1 || (event.modifierFlags & others) != 0) {
        return std::nullopt;
    }
    return shortcut([characters characterAtIndex:0]);
}

bool isForControls(const view::Shortcut& shortcut) {
    using Key = view::Shortcut::Key;
    return shortcut.key != Key::enter && shortcut.key != Key::escape;
}

}  // namespace velko
