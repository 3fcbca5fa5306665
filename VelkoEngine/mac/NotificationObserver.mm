#import "VelkoEngine/mac/NotificationObserver.h"

#include <memory>
#include <utility>

namespace velko {

Subscription observeNotification(NSNotificationCenter* center, NSNotificationName name,
                                 std::function<void(NSNotification*)> handler) {
    using Handler = std::function<void(NSNotification*)>;
    auto shared = std::make_shared<Handler>(std::move(handler));
    const std::weak_ptr<Handler> weak = shared;
    id<NSObject> token = [center addObserverForName:name
                                             object:nil
                                              queue:[NSOperationQueue mainQueue]
                                         usingBlock:^(NSNotification* notification) {
                                           // Held for the call, in which the subscription may end.
                                           if (const auto alive = weak.lock()) {
                                               (*alive)(notification);
                                           }
                                         }];
    return Subscription([center, token, shared]() mutable {
        [center removeObserver:token];
        shared.reset();
    });
}

}  // namespace velko
