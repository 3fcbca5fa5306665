#import "VelkoEngine/mac/MacAXObserver.h"

#import <ApplicationServices/ApplicationServices.h>
#import <dispatch/dispatch.h>

#include <memory>
#include <utility>

#include "VelkoEngine/mac/CFRef.h"
#include "VelkoEngine/mac/Conversions.h"
#include "VelkoEngine/mac/MacElement.h"

namespace velko {

namespace {

/// What the system's callback needs. It holds this for the call, in which the observer may end.
struct Listener : std::enable_shared_from_this<Listener> {
    Listener(float messagingTimeout, Accessibility::NotificationHandler notificationHandler)
        : timeout(messagingTimeout), handler(std::move(notificationHandler)) {}

    float timeout;
    Accessibility::NotificationHandler handler;
};

void hear(AXObserverRef /*observer*/, AXUIElementRef element, CFStringRef notification, void* context) {
    const auto listener = static_cast<Listener*>(context)->shared_from_this();
    if (const auto handler = listener->handler) {
        @autoreleasepool {  // the run loop calls this beside AppKit's events, and drains nothing by itself
            handler(portable((__bridge NSString*)notification),
                    MacElement::make(CFRef<AXUIElementRef>::retain(element), listener->timeout));
        }
    }
}

class MacAXObserver final : public AXObserver {
 public:
    MacAXObserver(CFRef<AXObserverRef> observer, std::shared_ptr<Listener> listener)
        : observer_(std::move(observer)), listener_(std::move(listener)) {
        // Also while a menu, an alert or a drag of our own holds the run loop in a mode of its own.
        CFRunLoopAddSource(CFRunLoopGetMain(), AXObserverGetRunLoopSource(observer_.get()),
                           kCFRunLoopCommonModes);
    }
    /// First no more callbacks, then the release. That waits for its turn on the main queue, because an
    /// observer may end within its own callback, while the system is still busy with it.
    ~MacAXObserver() override {
        CFRunLoopRemoveSource(CFRunLoopGetMain(), AXObserverGetRunLoopSource(observer_.get()),
                              kCFRunLoopCommonModes);
        listener_->handler = nullptr;
        const auto kept = std::make_shared<const std::pair<CFRef<AXObserverRef>, std::shared_ptr<Listener>>>(
            std::move(observer_), std::move(listener_));
        dispatch_async(dispatch_get_main_queue(), ^{
          static_cast<void>(kept);
        });
    }

    [[nodiscard]] std::expected<void, AXError> add(const AXElement& element,
                                                   const std::string& notification) override {
        NSString* name = native(notification);
        const ::AXError error = AXObserverAddNotification(observer_.get(), MacElement::of(element).ref(),
                                                          (__bridge CFStringRef)name, listener_.get());
        if (error != kAXErrorSuccess) {
            return std::unexpected(static_cast<AXError>(error));
        }
        return {};
    }

 private:
    CFRef<AXObserverRef> observer_;
    std::shared_ptr<Listener> listener_;
};

}  // namespace

std::unique_ptr<AXObserver> makeMacAXObserver(ProcessID pid, float messagingTimeout,
                                              Accessibility::NotificationHandler handler) {
    CFRef<AXObserverRef> observer;
    if (AXObserverCreate(pid, hear, observer.out()) != kAXErrorSuccess || !observer) {
        return nullptr;
    }
    return std::make_unique<MacAXObserver>(std::move(observer),
                                           std::make_shared<Listener>(messagingTimeout, std::move(handler)));
}

}  // namespace velko
