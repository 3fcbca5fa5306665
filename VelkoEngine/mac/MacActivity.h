#pragma once

#include "VelkoEngine/Ports/Activity.h"

namespace velko {

/// The activities that the system knows of this process.
class MacActivity final : public Activity {
 public:
    [[nodiscard]] Subscription begin(const std::string& reason) override;
};

}  // namespace velko
