#pragma once

#include <expected>
#include <functional>
#include <optional>
#include <string>

#include "VelkoCore/Keys/KeyCombination.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Keys that work while any app is in front, and the keyboard that they are on. Needs no permission. Main
/// thread.
class HotKeys : private NonCopyable {
 public:
    enum class Refusal {
        taken,   ///< this program has it already, or another one has it for itself
        failed,  ///< for another reason, which the system does not say
    };

    virtual ~HotKeys() = default;

    /// Takes a combination from all other apps and calls `pressed` each time it is pressed, until the
    /// subscription ends. Another app may have the same combination; then both hear of it.
    [[nodiscard]] virtual std::expected<Subscription, Refusal> add(const KeyCombination& keys,
                                                                   std::function<void()> pressed) = 0;

    /// Whether a shortcut of the system has that combination and is switched on. The system then takes it
    /// before anybody hears of it.
    [[nodiscard]] virtual bool isOfSystem(const KeyCombination& keys) const = 0;

    /// What a key types in the present layout without other keys, such as "k" or "é"; nothing if it types
    /// nothing that can be seen, or if the layout does not say.
    [[nodiscard]] virtual std::optional<std::string> typedBy(KeyCode key) const = 0;

    /// Calls `handler` when the user has chosen another layout, until the subscription ends.
    [[nodiscard]] virtual Subscription observeLayout(std::function<void()> handler) = 0;
};

/// What a key is called in the present layout, for people: "K", "É", "Space". Never empty.
[[nodiscard]] std::string nameOf(const HotKeys& keyboard, KeyCode key);

/// A combination as people write it: "⌃⌥K".
[[nodiscard]] std::string describe(const HotKeys& keyboard, const KeyCombination& keys);

}  // namespace velko
