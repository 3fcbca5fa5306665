#import "VelkoEngine/mac/MacDisplays.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "VelkoEngine/mac/Conversions.h"
#include "VelkoEngine/mac/NotificationObserver.h"

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

}  // namespace velko
