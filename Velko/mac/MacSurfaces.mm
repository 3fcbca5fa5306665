#import "Velko/mac/MacSurfaces.h"

#include <cstddef>

#import "Velko/mac/FloatingPanel.h"
#import "Velko/mac/RunLoop.h"
#import "Velko/mac/StandardWindow.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

MacSurfaces::MacSurfaces(MainThread& mainThread, AppIcons& icons) {
    for (const Traits& traits : all()) {
        if (traits.isWindow()) {
            surfaces_.push_back(std::make_unique<StandardWindow>(mainThread, icons));
        } else {
            surfaces_.push_back(std::make_unique<FloatingPanel>(mainThread, icons, traits));
        }
    }
}

Surface& MacSurfaces::surface(Kind kind) {
    return *surfaces_.at(static_cast<std::size_t>(kind));
}

bool MacSurfaces::reducesMotion() const {
    return [NSWorkspace sharedWorkspace].accessibilityDisplayShouldReduceMotion;
}

void MacSurfaces::announce(const std::string& words) {
    constexpr NSAccessibilityPriorityLevel priority = NSAccessibilityPriorityHigh;
    NSDictionary* info = @{
        NSAccessibilityAnnouncementKey : native(words),
        NSAccessibilityPriorityKey : @(static_cast<int>(priority))
    };
    // A turn later: a window that comes or goes in this one would swallow it.
    onMainRunLoop(^{
      NSApplication* application = [NSApplication sharedApplication];
      id speaker = application.keyWindow;
      NSAccessibilityPostNotificationWithUserInfo(speaker == nil ? application : speaker,
                                                  NSAccessibilityAnnouncementRequestedNotification, info);
    });
}

}  // namespace velko
