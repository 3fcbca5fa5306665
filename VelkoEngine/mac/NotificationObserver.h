#pragma once

#import <Foundation/Foundation.h>
#include <functional>

#include "VelkoEngine/Ports/Subscription.h"

namespace velko {

/// Calls `handler` on the main thread for every notification of that name, until the subscription ends;
/// one that is already on its way then is dropped. Main thread.
[[nodiscard]] Subscription observeNotification(NSNotificationCenter* center, NSNotificationName name,
                                               std::function<void(NSNotification*)> handler);

}  // namespace velko
