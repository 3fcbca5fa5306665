#import "VelkoEngine/mac/KeyObserver.h"

#import <dispatch/dispatch.h>

#include <memory>
#include <utility>

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
          // Held for the call, in which the subscription may end.
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

}  // namespace velko
