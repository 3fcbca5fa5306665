#include "Velko/Shelf/ShelfController.h"

#include "Velko/App/AppController.h"
#include "Velko/Broom/BelowBroom.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Shelf/ShelfView.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

namespace {

constexpr double gapBelowBar = 4;  // points

}  // namespace

ShelfController::ShelfController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts),
      broom_(broom),
      broomMoves_(broom_.observe([this] { sync(); })),
      displayChanges_(parts_.platform.displays.observeChanges([this] { sync(); })) {}

ShelfController::~ShelfController() {
    surface().close();
}

void ShelfController::sync() {
    if (!parts_.controller.values().isShelfShown()) {
        surface().close();
        return;
    }
    const auto place = placeBelowBroom(broom_.chevronFrame(), parts_.platform.displays.displays(),
                                       parts_.platform.displays.statusBarThickness(), gapBelowBar);
    if (!place) {
        surface().close();
        return;
    }
    if (!surface().isOpen()) {
        surface().open({.title = std::string(Surfaces::traitsOf(Surfaces::Kind::shelf).title),
                        .place = place,
                        .motion = motion(),
                        .takesKeyboard = !parts_.controller.values().revealedByPointer,
                        .content = content(*place),
                        .ignoresPress = [this](Point point) { return broom_.holdsUpwards(point); },
                        .dismiss = [this](Surface::Dismissal how) { return dismiss(how); },
                        .keyPressed = [this] { parts_.controller.shelfTouched(); }});
    } else {
        surface().update(content(*place));
        if (*place != place_) {
            surface().move(*place);
        }
    }
    place_ = *place;
}

Surface& ShelfController::surface() const {
    return parts_.ports.surfaces.surface(Surfaces::Kind::shelf);
}

Surface::Motion ShelfController::motion() const {
    if (parts_.ports.surfaces.reducesMotion()) {
        return {.fade = Timing::reducedMotionFade};
    }
    return {.springResponse = Timing::shelfSpringResponse, .springDamping = Timing::shelfSpringDamping};
}

view::Node ShelfController::content(const Surface::Place& place) const {
    return shelfView({.controller = parts_.controller,
                      .height = place.bounds.height,
                      .open = [this](const BundleID& bundleID) { onOpen(bundleID); },
                      .move =
                          [this](const BundleID& bundleID, Section section) {
                              onMove(bundleID, section);
                              parts_.controller.shelfTouched();
                          }});
}

bool ShelfController::dismiss(Surface::Dismissal how) const {
    onDismiss(how == Surface::Dismissal::clickOutside ? ShelfDismissal::click : ShelfDismissal::escape);
    return !parts_.controller.values().isShelfShown();
}

}  // namespace velko
