#pragma once

#import <Foundation/Foundation.h>

#include <functional>

#include "VelkoEngine/Ports/Subscription.h"

namespace velko {

/// Calls `handler` on the main thread, soon after the object's value for a key has changed, until the
/// subscription ends. Main thread; the object outlives the subscription.
[[nodiscard]] Subscription observeKey(NSObject* object, NSString* keyPath, std::function<void()> handler);

}  // namespace velko
