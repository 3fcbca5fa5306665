#pragma once

#include "Velko/Ports/Defaults.h"

namespace velko {

/// The standard user defaults.
class MacDefaults final : public Defaults {
 public:
    [[nodiscard]] bool isOn(const std::string& key) const override;
    void setOn(const std::string& key, bool on) override;
};

}  // namespace velko
