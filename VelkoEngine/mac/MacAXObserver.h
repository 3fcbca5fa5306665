#pragma once

#include <memory>

#include "VelkoEngine/Ports/Accessibility.h"

namespace velko {

/// Installs an observer on the main run loop; null when the system refuses. Main thread.
[[nodiscard]] std::unique_ptr<AXObserver> makeMacAXObserver(ProcessID pid, float messagingTimeout,
                                                            Accessibility::NotificationHandler handler);

}  // namespace velko
