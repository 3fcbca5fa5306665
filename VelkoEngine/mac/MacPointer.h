#pragma once

#include "VelkoEngine/Ports/Pointer.h"

namespace velko {

/// The mouse, as the window server's session sees it.
class MacPointer final : public Pointer {
 public:
    [[nodiscard]] std::unique_ptr<ClickTap> tapClicks(
        std::function<void(const ClickTapEvent&)> handler) override;
    [[nodiscard]] Point location() const override;
    [[nodiscard]] unsigned pressedButtons() const override;
    [[nodiscard]] Subscription observeMoves(std::function<void()> handler) override;
};

}  // namespace velko
