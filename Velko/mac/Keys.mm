#import "Velko/mac/Keys.h"

#include <string>

#import "Velko/mac/ListView.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

constexpr unichar enterOnKeypad = 0x03;
constexpr unichar escapeKey = 0x1B;
constexpr unichar upArrow = 0xF700;
constexpr unichar downArrow = 0xF701;
constexpr unichar leftArrow = 0xF702;
constexpr unichar rightArrow = 0xF703;

/// The pressed key; nothing if other keys than Shift are down with it.
std::optional<unichar> plainKey(NSEvent* event) {
    NSString* characters = event.charactersIgnoringModifiers;
    const NSEventModifierFlags others =
        NSEventModifierFlagCommand | NSEventModifierFlagControl | NSEventModifierFlagOption;
    if (characters.length != 1 || (event.modifierFlags & others) != 0) {
        return std::nullopt;
    }
    return [characters characterAtIndex:0];
}

bool isHeld(NSEvent* event, NSEventModifierFlags flag) {
    return (event.modifierFlags & flag) != 0;
}

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
    const auto key = plainKey(event);
    return key ? shortcut(*key) : std::nullopt;
}

std::optional<view::Arrow> arrowOf(NSEvent* event) {
    switch (plainKey(event).value_or(0)) {
        case leftArrow:
            return view::Arrow::left;
        case rightArrow:
            return view::Arrow::right;
        case upArrow:
            return view::Arrow::up;
        case downArrow:
            return view::Arrow::down;
        default:
            return std::nullopt;
    }
}

KeyCombination combinationOf(NSEvent* event) {
    return {.key = event.keyCode,
            .control = isHeld(event, NSEventModifierFlagControl),
            .option = isHeld(event, NSEventModifierFlagOption),
            .shift = isHeld(event, NSEventModifierFlagShift),
            .command = isHeld(event, NSEventModifierFlagCommand)};
}

std::optional<char> menuKeyOf(NSEvent* event) {
    NSString* characters = event.charactersIgnoringModifiers;
    const NSEventModifierFlags all = NSEventModifierFlagCommand | NSEventModifierFlagControl |
                                     NSEventModifierFlagOption | NSEventModifierFlagShift;
    if (characters.length != 1 || (event.modifierFlags & all) != NSEventModifierFlagCommand ||
        !isOwn([characters characterAtIndex:0])) {
        return std::nullopt;
    }
    return static_cast<char>([characters characterAtIndex:0]);
}

std::optional<view::KeyPress> keyPressOf(NSEvent* event) {
    using Key = view::KeyPress::Key;
    NSString* characters = event.charactersIgnoringModifiers;
    if (characters.length != 1) {
        return std::nullopt;
    }
    const unichar character = [characters characterAtIndex:0];
    const auto pressed = [event](Key key, int digit = 0) {
        const auto isDown = [event](NSEventModifierFlags flag) { return isHeld(event, flag); };
        return view::KeyPress{.key = key,
                              .digit = digit,
                              .shift = isDown(NSEventModifierFlagShift),
                              .control = isDown(NSEventModifierFlagControl),
                              .option = isDown(NSEventModifierFlagOption),
                              .command = isDown(NSEventModifierFlagCommand)};
    };
    if (character >= '1' && character <= '9' && isHeld(event, NSEventModifierFlagCommand)) {
        return pressed(Key::digit, character - '0');
    }
    switch (character) {
        case upArrow:
            return pressed(Key::up);
        case downArrow:
            return pressed(Key::down);
        case '\r':
        case enterOnKeypad:
            return pressed(Key::enter);
        case escapeKey:
            return pressed(Key::escape);
        default:
            return std::nullopt;
    }
}

bool isForControls(const view::Shortcut& shortcut) {
    using Key = view::Shortcut::Key;
    return shortcut.key != Key::enter && shortcut.key != Key::escape;
}

bool usesKeys(NSResponder* responder) {
    return [responder isKindOfClass:[NSText class]] || [responder isKindOfClass:[NSSegmentedControl class]] ||
           [responder isKindOfClass:[NSTableView class]];
}

bool activatesByEnter(NSResponder* responder) {
    return [responder isKindOfClass:[VLKListView class]] && ((VLKListView*)responder).activates;
}

VLKSearchField* fieldOf(NSResponder* responder) {
    // The system puts its editor for texts into the field.
    NSView* view = [responder isKindOfClass:[NSTextView class]] ? (NSView*)responder : nil;
    while (view != nil && ![view isKindOfClass:[VLKSearchField class]]) {
        view = view.superview;
    }
    return (VLKSearchField*)view;
}

}  // namespace velko
