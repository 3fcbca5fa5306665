#pragma once

#include "VelkoEngine/Ports/Displays.h"

namespace velko {

/// The screens as the window system reports them.
class MacDisplays final : public Displays {
 public:
    [[nodiscard]] std::vector<Display> displays() const override;
    [[nodiscard]] double statusBarThickness() const override;
    [[nodiscard]] Subscription observeChanges(std::function<void()> handler) override;
};

}  // namespace velko
