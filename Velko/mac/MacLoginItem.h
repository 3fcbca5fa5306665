#pragma once

#include "Velko/Ports/LoginItem.h"

namespace velko {

/// This app among the user's login items.
class MacLoginItem final : public LoginItem {
 public:
    [[nodiscard]] Status status() const override;
    [[nodiscard]] std::expected<void, std::string> setEnabled(bool enabled) override;
};

}  // namespace velko
