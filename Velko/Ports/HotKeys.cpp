#include "Velko/Ports/HotKeys.h"

#include "VelkoCore/Search/FoldedText.h"

namespace velko {

std::string nameOf(const HotKeys& keyboard, KeyCode key) {
    if (const auto name = Keys::fixedName(key)) {
        return std::string(*name);
    }
    if (const auto typed = keyboard.typedBy(key); typed && !typed->empty()) {
        return capital(*typed);
    }
    const auto usual = Keys::usualName(key);
    return usual ? std::string(*usual) : "key " + std::to_string(key);
}

std::string describe(const HotKeys& keyboard, const KeyCombination& keys) {
    return Keys::signsOfHeld(keys) + nameOf(keyboard, keys.key);
}

}  // namespace velko
