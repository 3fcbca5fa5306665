#pragma once

#include "VelkoEngine/Ports/Windows.h"

namespace velko {

/// The window server's list.
class MacWindows final : public Windows {
 public:
    [[nodiscard]] std::optional<std::vector<WindowInfo>> onScreen() const override;
    [[nodiscard]] std::int64_t popUpMenuLevel() const override;
};

}  // namespace velko
