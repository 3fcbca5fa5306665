#pragma once

#include <functional>

#include "Velko/Ports/HotKeys.h"
#include "VelkoEngine/Contracts/Contracts.h"

/// What every implementation of `HotKeys` must do. Main thread.
namespace velko::Contracts {

/// The harmless part: for a moment it takes ⌃⌥⇧⌘F20, a key that few keyboards have.
void checkHotKeys(HotKeys& hotKeys, Checks& checks);

/// Who presses keys, and who takes them away.
struct TestKeyboard {
    Pass pass;
    std::function<void(const KeyCombination&)> press;
    std::function<void(const KeyCombination&)> giveToOther;  ///< another app has it for itself from now on
    std::function<void()> changeLayout;
};

/// The part that presses keys, on a machine that belongs to the test.
void checkPressedKeys(HotKeys& hotKeys, const TestKeyboard& keyboard, Checks& checks);

}  // namespace velko::Contracts
