#import "VelkoEngine/mac/MacAccessibility.h"

#import <ApplicationServices/ApplicationServices.h>
#import <dispatch/dispatch.h>

#include <memory>
#include <utility>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

/// What the system's callback needs. The callback keeps it alive during the call, in which the observer may
/// end.
struct Listener : std::enable_shared_from_this<Listener> {
    Listener(Uptime messagingTimeout, Accessibility::NotificationHandler notificationHandler)
        : timeout(messagingTimeout), handler(std::move(notificationHandler)) {}

    Uptime timeout;
    Accessibility::NotificationHandler handler;
};

void hear(AXObserverRef /*observer*/, AXUIElementRef element, CFStringRef notification, void* context) {
    const auto listener = static_cast<Listener*>(context)->shared_from_this();
    if (const auto handler = listener->handler) {
        @autoreleasepool {  // the run loop calls this outside AppKit's events, where no pool is drained
            handler(portable((__bridge NSString*)notification),
                    MacElement::make(CFRef<AXUIElementRef>::retain(element), listener->timeout));
        }
    }
}

class MacAXObserver final : public AXObserver {
 public:
    MacAXObserver(CFRef<AXObserverRef> observer, std::shared_ptr<Listener> listener)
        : observer_(std::move(observer)), listener_(std::move(listener)) {
        // In the common modes: it is also called while a menu, an alert or a drag of ours runs the loop in
        // another mode.
        CFRunLoopAddSource(CFRunLoopGetMain(), AXObserverGetRunLoopSource(observer_.get()),
                           kCFRunLoopCommonModes);
    }
    /// First stops the callbacks, then releases. The release waits for its turn on the main queue, because an
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

std::unique_ptr<AXObserver> makeMacAXObserver(ProcessID pid, Uptime messagingTimeout,
                                              Accessibility::NotificationHandler handler) {
    CFRef<AXObserverRef> observer;
    if (AXObserverCreate(pid, hear, observer.out()) != kAXErrorSuccess || !observer) {
        return nullptr;
    }
    return std::make_unique<MacAXObserver>(std::move(observer),
                                           std::make_shared<Listener>(messagingTimeout, std::move(handler)));
}

namespace {

std::unexpected<AXError> failed(::AXError error) {
    return std::unexpected(static_cast<AXError>(error));
}

AXUIElementRef asElement(CFTypeRef object) {
    return CFGetTypeID(object) == AXUIElementGetTypeID() ? static_cast<AXUIElementRef>(object) : nullptr;
}

/// An array of elements; other arrays are of no use.
AXValue valueOfArray(CFArrayRef array, Uptime timeout) {
    std::vector<AXElement> elements;
    const CFIndex count = CFArrayGetCount(array);
    elements.reserve(static_cast<std::size_t>(count));
    for (CFIndex index = 0; index < count; ++index) {
        const AXUIElementRef element = asElement(CFArrayGetValueAtIndex(array, index));
        if (element == nullptr) {
            return AXOther{};
        }
        elements.push_back(MacElement::make(CFRef<AXUIElementRef>::retain(element), timeout));
    }
    return elements;
}

AXValue valueOfStructure(AXValueRef value) {
    CGPoint point{};
    CGSize size{};
    if (AXValueGetValue(value, kAXValueTypeCGPoint, &point)) {
        return portable(point);
    }
    if (AXValueGetValue(value, kAXValueTypeCGSize, &size)) {
        return portable(size);
    }
    return AXOther{};
}

AXValue valueOfNumber(CFNumberRef number) {
    double value = 0;
    CFNumberGetValue(number, kCFNumberDoubleType, &value);
    return value;
}

AXValue valueOf(CFTypeRef object, Uptime timeout) {
    const CFTypeID type = CFGetTypeID(object);
    if (type == CFStringGetTypeID()) {
        return portable((__bridge NSString*)object);
    }
    if (type == CFBooleanGetTypeID()) {
        return CFBooleanGetValue(static_cast<CFBooleanRef>(object)) != 0;
    }
    if (type == CFNumberGetTypeID()) {
        return valueOfNumber(static_cast<CFNumberRef>(object));
    }
    if (type == AXValueGetTypeID()) {
        return valueOfStructure(static_cast<AXValueRef>(object));
    }
    if (type == CFArrayGetTypeID()) {
        return valueOfArray(static_cast<CFArrayRef>(object), timeout);
    }
    if (const AXUIElementRef element = asElement(object)) {
        return MacElement::make(CFRef<AXUIElementRef>::retain(element), timeout);
    }
    return AXOther{};
}

/// The answer for one attribute of several: its value, or the error that reading it alone would give.
AXAnswer answerOf(CFTypeRef object, Uptime timeout) {
    ::AXError error = kAXErrorSuccess;
    if (CFGetTypeID(object) == AXValueGetTypeID() &&
        AXValueGetValue(static_cast<AXValueRef>(object), kAXValueTypeAXError, &error)) {
        return failed(error);
    }
    return valueOf(object, timeout);
}

}  // namespace

MacAccessibility::MacAccessibility(Uptime messagingTimeout) {
    // On the system-wide element, the time-out becomes the default of the whole process.
    const auto everything = CFRef<AXUIElementRef>::adopt(AXUIElementCreateSystemWide());
    AXUIElementSetMessagingTimeout(everything.get(), inSeconds(messagingTimeout));
}

bool MacAccessibility::isTrusted() const {
    return AXIsProcessTrusted() != 0;
}

void MacAccessibility::promptForTrust() {
    NSDictionary* options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
    AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
}

AXElement MacAccessibility::application(ProcessID pid, Uptime messagingTimeout) const {
    return MacElement::make(CFRef<AXUIElementRef>::adopt(AXUIElementCreateApplication(pid)),
                            messagingTimeout);
}

std::expected<AXValue, AXError> MacAccessibility::attribute(const AXElement& element,
                                                            const std::string& name) const {
    const MacElement& asked = MacElement::of(element);
    NSString* attribute = native(name);
    CFRef<CFTypeRef> value;
    const ::AXError error =
        AXUIElementCopyAttributeValue(asked.ref(), (__bridge CFStringRef)attribute, value.out());
    if (error != kAXErrorSuccess) {
        return failed(error);
    }
    if (!value) {
        return failed(kAXErrorNoValue);
    }
    return valueOf(value.get(), asked.timeout());
}

std::expected<std::vector<AXAnswer>, AXError> MacAccessibility::attributes(
    const AXElement& element, const std::vector<std::string>& names) const {
    const MacElement& asked = MacElement::of(element);
    NSArray<NSString*>* attributes = native(names);
    CFRef<CFArrayRef> values;
    const ::AXError error = AXUIElementCopyMultipleAttributeValues(
        asked.ref(), (__bridge CFArrayRef)attributes, AXCopyMultipleAttributeOptions{}, values.out());
    if (error != kAXErrorSuccess) {
        return failed(error);
    }
    if (!values || CFArrayGetCount(values.get()) != static_cast<CFIndex>(names.size())) {
        return failed(kAXErrorNoValue);
    }
    std::vector<AXAnswer> answers;
    for (CFIndex index = 0; index < CFArrayGetCount(values.get()); ++index) {
        answers.push_back(answerOf(CFArrayGetValueAtIndex(values.get(), index), asked.timeout()));
    }
    return answers;
}

std::expected<std::vector<std::string>, AXError> MacAccessibility::attributeNames(
    const AXElement& element) const {
    CFRef<CFArrayRef> names;
    const ::AXError error = AXUIElementCopyAttributeNames(MacElement::of(element).ref(), names.out());
    if (error != kAXErrorSuccess) {
        return failed(error);
    }
    std::vector<std::string> result;
    for (NSString* name in (__bridge NSArray<NSString*>*)names.get()) {
        result.push_back(portable(name));
    }
    return result;
}

std::expected<ProcessID, AXError> MacAccessibility::pid(const AXElement& element) const {
    pid_t pid = 0;
    const ::AXError error = AXUIElementGetPid(MacElement::of(element).ref(), &pid);
    if (error != kAXErrorSuccess) {
        return failed(error);
    }
    return pid;
}

std::expected<AXElement, AXError> MacAccessibility::elementAt(Point point, Uptime messagingTimeout) const {
    const auto everything = CFRef<AXUIElementRef>::adopt(AXUIElementCreateSystemWide());
    CFRef<AXUIElementRef> found;
    const ::AXError error = AXUIElementCopyElementAtPosition(everything.get(), static_cast<float>(point.x),
                                                             static_cast<float>(point.y), found.out());
    if (error != kAXErrorSuccess) {
        return failed(error);
    }
    if (!found) {
        return failed(kAXErrorNoValue);
    }
    return MacElement::make(std::move(found), messagingTimeout);
}

std::expected<void, AXError> MacAccessibility::perform(const AXElement& element, const std::string& action) {
    NSString* name = native(action);
    const ::AXError error =
        AXUIElementPerformAction(MacElement::of(element).ref(), (__bridge CFStringRef)name);
    if (error != kAXErrorSuccess) {
        return failed(error);
    }
    return {};
}

std::unique_ptr<AXObserver> MacAccessibility::observe(ProcessID pid, Uptime messagingTimeout,
                                                      NotificationHandler handler) {
    return makeMacAXObserver(pid, messagingTimeout, std::move(handler));
}

}  // namespace velko
