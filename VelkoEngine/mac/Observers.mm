#import "VelkoEngine/mac/Observers.h"

#import <dispatch/dispatch.h>

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
                                           // Kept alive during the call, in which the subscription may end.
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

/// What the runtime tells of a change, on whatever thread makes it.
@interface VLKKeyObserver : NSObject
- (instancetype)initWithHandler:(std::shared_ptr<const std::function<void()>>)handler;
@end

@implementation VLKKeyObserver {
    std::weak_ptr<const std::function<void()>> _handler;
}

- (instancetype)initWithHandler:(std::shared_ptr<const std::function<void()>>)handler {
    self = [super init];
    if (self != nil) {
        _handler = handler;
    }
    return self;
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context {
    if (context != (__bridge void*)self) {
        [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
        return;
    }
    const auto weak = _handler;
    dispatch_async(dispatch_get_main_queue(), ^{
      @autoreleasepool {
          // Kept alive during the call, in which the subscription may end.
          if (const auto handler = weak.lock()) {
              (*handler)();
          }
      }
    });
}

@end

namespace velko {

Subscription observeKey(NSObject* object, NSString* keyPath, std::function<void()> handler) {
    auto shared = std::make_shared<const std::function<void()>>(std::move(handler));
    VLKKeyObserver* observer = [[VLKKeyObserver alloc] initWithHandler:shared];
    [object addObserver:observer
             forKeyPath:keyPath
                options:NSKeyValueObservingOptions {}
                context:(__bridge void*)observer];
    return Subscription([object, keyPath, observer, shared]() mutable {
        [object removeObserver:observer forKeyPath:keyPath context:(__bridge void*)observer];
        shared.reset();
    });
}

namespace {

/// The handler lives as long as the subscription, and until a running call has returned.
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
