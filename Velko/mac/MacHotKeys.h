#pragma once

#import <Carbon/Carbon.h>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "Velko/Ports/HotKeys.h"

namespace velko {

/// Carbon's global keys, and the keyboard's layout as the system's text input knows it.
class MacHotKeys final : public HotKeys {
 public:
    MacHotKeys() = default;
    ~MacHotKeys() override;

    [[nodiscard]] std::expected<Subscription, Refusal> add(const KeyCombination& keys,
                                                           std::function<void()> pressed) override;
    [[nodiscard]] bool isOfSystem(const KeyCombination& keys) const override;
    [[nodiscard]] std::optional<std::string> typedBy(KeyCode key) const override;
    [[nodiscard]] Subscription observeLayout(std::function<void()> handler) override;

 private:
    using Handlers = std::map<UInt32, std::function<void()>>;

    [[nodiscard]] bool listen();

    std::shared_ptr<Handlers> handlers_ = std::make_shared<Handlers>();  ///< by the number of the key
    UInt32 nextID_ = 1;
    EventHandlerRef listening_ = nullptr;  ///< from the first key on
};

}  // namespace velko
