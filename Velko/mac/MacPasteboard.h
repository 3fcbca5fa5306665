#pragma once

#include "Velko/Ports/Pasteboard.h"

namespace velko {

/// The general pasteboard.
class MacPasteboard final : public Pasteboard {
 public:
    void setText(const std::string& text) override;
};

}  // namespace velko
