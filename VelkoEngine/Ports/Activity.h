#pragma once

#include <string>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Subscription.h"

namespace velko {

/// The system's leave to stretch the timers of a program that nobody looks at, held off for a while. Main
/// thread.
class Activity : private NonCopyable {
 public:
    virtual ~Activity() = default;

    /// While the subscription lasts, timers come when they are due. `reason` says what for; people can read
    /// it. Several may last at a time. The machine may still go to sleep.
    [[nodiscard]] virtual Subscription begin(const std::string& reason) = 0;
};

}  // namespace velko
