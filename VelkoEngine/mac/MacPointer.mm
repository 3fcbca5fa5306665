#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

#include <memory>
#include <utility>

#include "VelkoEngine/mac/Conversions.h"
#import "VelkoEngine/mac/MacPlatform.h"
#include "VelkoEngine/mac/Observers.h"

namespace velko {

namespace {

/// What the system's callback needs. The callback keeps it alive during the call, in which the tap may end.
struct Listener : std::enable_shared_from_this<Listener> {
    explicit Listener(std::function<void(const ClickTapEvent&)> eventHandler)
        : handler(std::move(eventHandler)) {}

    std::function<void(const ClickTapEvent&)> handler;
};

CGEventRef hear(CGEventTapProxy /*proxy*/, CGEventType type, CGEventRef event, void* context) {
    const auto listener = static_cast<Listener*>(context)->shared_from_this();
    @autoreleasepool {  // the run loop calls this outside AppKit's events, where no pool is drained
        if (type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput) {
            listener->handler({.kind = ClickTapEvent::Kind::disabled});
        } else {
            listener->handler({.kind = ClickTapEvent::Kind::mouseDown,
                               .location = portable(CGEventGetLocation(event)),
                               .isRight = type == kCGEventRightMouseDown,
                               .option = (CGEventGetFlags(event) & kCGEventFlagMaskAlternate) != 0});
        }
    }
    return event;
}

class MacClickTap final : public ClickTap {
 public:
    MacClickTap(CFRef<CFMachPortRef> tap, CFRef<CFRunLoopSourceRef> source,
                std::shared_ptr<Listener> listener)
        : listener_(std::move(listener)), tap_(std::move(tap)), source_(std::move(source)) {
        CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
        enable();
    }
    /// Switches the tap off first, so that no event comes any more, and then leaves the run loop. The port
    /// goes last, with the listener to which it points.
    ~MacClickTap() override {
        CGEventTapEnable(tap_.get(), false);
        CFRunLoopRemoveSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
        CFMachPortInvalidate(tap_.get());
    }

    void enable() override { CGEventTapEnable(tap_.get(), true); }

    [[nodiscard]] bool isEnabled() const override { return CGEventTapIsEnabled(tap_.get()); }

 private:
    std::shared_ptr<Listener> listener_;
    CFRef<CFMachPortRef> tap_;
    CFRef<CFRunLoopSourceRef> source_;
};

}  // namespace

std::unique_ptr<ClickTap> MacPointer::tapClicks(std::function<void(const ClickTapEvent&)> handler) {
    auto listener = std::make_shared<Listener>(std::move(handler));
    auto tap = CFRef<CFMachPortRef>::adopt(
        CGEventTapCreate(kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionListenOnly,
                         CGEventMaskBit(kCGEventLeftMouseDown) | CGEventMaskBit(kCGEventRightMouseDown), hear,
                         listener.get()));
    if (!tap) {
        return nullptr;
    }
    auto source =
        CFRef<CFRunLoopSourceRef>::adopt(CFMachPortCreateRunLoopSource(kCFAllocatorDefault, tap.get(), 0));
    if (!source) {
        return nullptr;
    }
    return std::make_unique<MacClickTap>(std::move(tap), std::move(source), std::move(listener));
}

Point MacPointer::location() const {
    return portable([NSEvent mouseLocation]);
}

unsigned MacPointer::pressedButtons() const {
    return static_cast<unsigned>([NSEvent pressedMouseButtons]);
}

Subscription MacPointer::observeMoves(std::function<void()> handler) {
    const auto shared = std::make_shared<const std::function<void()>>(std::move(handler));
    auto monitors = std::make_shared<std::pair<Subscription, Subscription>>(
        monitorOthersEvents(NSEventMaskMouseMoved, [shared](NSEvent*) { (*shared)(); }),
        monitorOwnEvents(NSEventMaskMouseMoved, [shared](NSEvent*) {
            (*shared)();
            return false;
        }));
    return Subscription([monitors] {
        monitors->first.end();
        monitors->second.end();
    });
}

}  // namespace velko
