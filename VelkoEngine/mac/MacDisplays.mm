#import "VelkoEngine/mac/MacDisplays.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "VelkoEngine/mac/Conversions.h"
#include "VelkoEngine/mac/NotificationObserver.h"

namespace velko {

namespace {

Display portable(NSScreen* screen) {
    // A screen without a camera housing answers with an empty rectangle.
    const NSRect besideHousing = screen.auxiliaryTopLeftArea;
    return {.frame = velko::portable(screen.frame),
            .visibleFrame = velko::portable(screen.visibleFrame),
            .safeAreaTop = screen.safeAreaInsets.top,
            .hasAuxiliaryTopLeftArea = besideHousing.size.width > 0 && besideHousing.size.height > 0};
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

}  // namespace velko
