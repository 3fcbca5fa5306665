#import "Velko/mac/MacSurfaces.h"

#import "Velko/mac/RunLoop.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

Surface& MacSurfaces::surface(Kind kind) {
    switch (kind) {
        case Kind::note:
            return note_;
        case Kind::shelf:
            return shelf_;
        case Kind::setup:
            return setup_;
        case Kind::permissionGuide:
            return permissionGuide_;
        case Kind::settings:
            break;
    }
    return settings_;
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
