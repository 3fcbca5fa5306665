#include "Velko/Checks/HotKeyContract.h"

#include <chrono>
#include <string>

namespace velko::Contracts {

namespace {

using namespace std::chrono_literals;

constexpr KeyCode f20 = 90;
constexpr KeyCode f19 = 80;

constexpr KeyCombination everythingWith(KeyCode key) {
    return {.key = key, .control = true, .option = true, .shift = true, .command = true};
}

bool isTaken(const std::expected<Subscription, HotKeys::Refusal>& answer) {
    return !answer && answer.error() == HotKeys::Refusal::taken;
}

}  // namespace

void checkHotKeys(HotKeys& hotKeys, Checks& checks) {
    const KeyCombination keys = everythingWith(f20);
    auto first = hotKeys.add(keys, [] {});
    expect(checks, "keys: one that nobody has can be had", first.has_value());
    expect(checks, "keys: nobody gets the same one twice", isTaken(hotKeys.add(keys, [] {})));
    if (first) {
        first->end();
    }
    expect(checks, "keys: one that was given back can be had again", hotKeys.add(keys, [] {}).has_value());
    Subscription changes = hotKeys.observeLayout([] {});
    const bool wasActive = changes.isActive();
    changes.end();
    expect(checks, "keys: watching the layout can be ended", wasActive && !changes.isActive());
    std::string names;
    bool areThere = true;
    for (KeyCode key = 0; key <= KeyCombination::lastKey; ++key) {
        const std::string name = nameOf(hotKeys, key);
        areThere = areThere && !name.empty();
        names += Keys::fixedName(key) || !Keys::usualName(key) ? "" : name;
    }
    expect(checks, "keys: every key has a name", areThere, names);
}

void checkPressedKeys(HotKeys& hotKeys, const TestKeyboard& keyboard, Checks& checks) {
    const KeyCombination keys = everythingWith(f20);
    const KeyCombination other = everythingWith(f19);
    int presses = 0;
    auto hearing = hotKeys.add(keys, [&presses] { ++presses; });
    keyboard.press(keys);
    keyboard.press(other);
    expect(checks, "keys: nobody hears of a press within the press", presses == 0);
    keyboard.pass(100ms);
    expect(checks, "keys: each press is heard once, and no other key's", presses == 1);
    hearing = std::unexpected(HotKeys::Refusal::failed);
    keyboard.press(keys);
    keyboard.pass(100ms);
    expect(checks, "keys: a key that was given back is silent", presses == 1);
    keyboard.giveToOther(other);
    expect(checks, "keys: one that another app has for itself is refused as taken",
           isTaken(hotKeys.add(other, [] {})));
    int changes = 0;
    const Subscription watching = hotKeys.observeLayout([&changes] { ++changes; });
    keyboard.changeLayout();
    keyboard.pass(100ms);
    expect(checks, "keys: another layout is told of", changes == 1);
}

}  // namespace velko::Contracts
