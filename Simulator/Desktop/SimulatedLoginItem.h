#pragma once

#include <optional>

#include "Velko/Ports/Desktop.h"

namespace velko {

/// The system's list of programs to open at login.
class SimulatedLoginItem final : public LoginItem {
 public:
    [[nodiscard]] Status status() const override { return now; }
    [[nodiscard]] std::expected<void, std::string> setEnabled(bool enabled) override {
        if (refusal) {
            return std::unexpected(*refusal);
        }
        now = enabled ? Status::enabled : Status::notRegistered;
        return {};
    }

    Status now = Status::notRegistered;
    std::optional<std::string> refusal;  ///< every change is refused with these words
};

}  // namespace velko
