#import "Velko/mac/MacSurfaces.h"

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

}  // namespace velko
