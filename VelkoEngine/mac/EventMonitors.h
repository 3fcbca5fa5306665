#pragma once

#import <AppKit/AppKit.h>
#include <functional>

#include "VelkoEngine/Ports/Subscription.h"

namespace velko {

/// Calls `handler` for events of these kinds that go to other programs, until the subscription ends. Main
/// thread.
[[nodiscard]] Subscription monitorOthersEvents(NSEventMask kinds, std::function<void(NSEvent*)> handler);

/// Calls `handler` for events of these kinds that go to this program, before they are delivered, until the
/// subscription ends. It answers whether it has dealt with the event, which then goes no further. Main
/// thread.
[[nodiscard]] Subscription monitorOwnEvents(NSEventMask kinds, std::function<bool(NSEvent*)> handler);

}  // namespace velko
