#pragma once

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#include <functional>

#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Calls `handler` on the main thread for every notification of that name, until the subscription ends; a
/// notification that is on its way at that moment is dropped. Main thread.
[[nodiscard]] Subscription observeNotification(NSNotificationCenter* center, NSNotificationName name,
                                               std::function<void(NSNotification*)> handler);

/// Calls `handler` on the main thread, soon after the object's value for a key has changed, until the
/// subscription ends. Main thread; the object outlives the subscription.
[[nodiscard]] Subscription observeKey(NSObject* object, NSString* keyPath, std::function<void()> handler);

/// Calls `handler` for events of these kinds that go to other programs, until the subscription ends. Main
/// thread.
[[nodiscard]] Subscription monitorOthersEvents(NSEventMask kinds, std::function<void(NSEvent*)> handler);

/// Calls `handler` for events of these kinds that go to this program, before they are delivered, until the
/// subscription ends. It answers whether it has dealt with the event, which then goes no further. Main
/// thread.
[[nodiscard]] Subscription monitorOwnEvents(NSEventMask kinds, std::function<bool(NSEvent*)> handler);

}  // namespace velko
