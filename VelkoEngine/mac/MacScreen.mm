#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

#include <limits>
#include <utility>

#include "VelkoEngine/mac/Conversions.h"
#import "VelkoEngine/mac/MacPlatform.h"
#include "VelkoEngine/mac/Observers.h"

namespace velko {

namespace {

Display portable(NSScreen* screen) {
    return {.frame = velko::portable(screen.frame),
            .visibleFrame = velko::portable(screen.visibleFrame),
            .safeAreaTop = screen.safeAreaInsets.top,
            .auxiliaryTopLeft = velko::portable(screen.auxiliaryTopLeftArea),
            .auxiliaryTopRight = velko::portable(screen.auxiliaryTopRightArea)};
}

}  // namespace

std::vector<Display> MacDisplays::displays() const {
    std::vector<Display> result;
    for (NSScreen* screen in [NSScreen screens]) {
        result.push_back(portable(screen));
    }
    return result;
}

double MacDisplays::statusBarThickness() const {
    return [NSStatusBar systemStatusBar].thickness;
}

Subscription MacDisplays::observeChanges(std::function<void()> handler) {
    return observeNotification([NSNotificationCenter defaultCenter],
                               NSApplicationDidChangeScreenParametersNotification,
                               [handler = std::move(handler)](NSNotification*) { handler(); });
}

namespace {

std::optional<ProcessID> processID(std::optional<std::int64_t> number) {
    if (!number || *number < std::numeric_limits<ProcessID>::min() ||
        *number > std::numeric_limits<ProcessID>::max()) {
        return std::nullopt;
    }
    return static_cast<ProcessID>(*number);
}

std::optional<Rect> frame(CFTypeRef bounds) {
    CGRect rect{};
    if (bounds == nullptr || CFGetTypeID(bounds) != CFDictionaryGetTypeID() ||
        !CGRectMakeWithDictionaryRepresentation(static_cast<CFDictionaryRef>(bounds), &rect)) {
        return std::nullopt;
    }
    return velko::portable(rect);
}

}  // namespace

std::optional<std::vector<WindowInfo>> MacWindows::onScreen() const {
    const auto list = CFRef<CFArrayRef>::adopt(
        CGWindowListCopyWindowInfo(kCGWindowListOptionOnScreenOnly, kCGNullWindowID));
    if (!list) {
        return std::nullopt;
    }
    std::vector<WindowInfo> result;
    for (NSDictionary* window in (__bridge NSArray<NSDictionary*>*)list.get()) {
        const auto info = (__bridge CFDictionaryRef)window;
        result.push_back({.layer = wholeNumber(CFDictionaryGetValue(info, kCGWindowLayer)),
                          .ownerPID = processID(wholeNumber(CFDictionaryGetValue(info, kCGWindowOwnerPID))),
                          .frame = frame(CFDictionaryGetValue(info, kCGWindowBounds))});
    }
    return result;
}

std::int64_t MacWindows::popUpMenuLevel() const {
    return CGWindowLevelForKey(kCGPopUpMenuWindowLevelKey);
}

}  // namespace velko
