#import "VelkoEngine/mac/EventMonitors.h"

#include <memory>
#include <utility>

namespace velko {

namespace {

/// The handler lives as long as the subscription, and for a call in which that ends.
template <class Handler>
Subscription monitoring(id monitor, std::shared_ptr<Handler> handler) {
    return Subscription([monitor, handler = std::move(handler)]() mutable {
        handler.reset();
        if (monitor != nil) {
            [NSEvent removeMonitor:monitor];
        }
    });
}

}  // namespace

Subscription monitorOthersEvents(NSEventMask kinds, std::function<void(NSEvent*)> handler) {
    auto shared = std::make_shared<std::function<void(NSEvent*)>>(std::move(handler));
    const std::weak_ptr<std::function<void(NSEvent*)>> weak = shared;
    id monitor = [NSEvent addGlobalMonitorForEventsMatchingMask:kinds
                                                        handler:^(NSEvent* event) {
                                                          if (const auto alive = weak.lock()) {
                                                              (*alive)(event);
                                                          }
                                                        }];
    return monitoring(monitor, std::move(shared));
}

Subscription monitorOwnEvents(NSEventMask kinds, std::function<bool(NSEvent*)> handler) {
    auto shared = std::make_shared<std::function<bool(NSEvent*)>>(std::move(handler));
    const std::weak_ptr<std::function<bool(NSEvent*)>> weak = shared;
    id monitor = [NSEvent addLocalMonitorForEventsMatchingMask:kinds
                                                       handler:^NSEvent*(NSEvent* event) {
                                                         const auto alive = weak.lock();
                                                         return alive && (*alive)(event) ? nil : event;
                                                       }];
    return monitoring(monitor, std::move(shared));
}

}  // namespace velko
