#include "Velko/Shelf/ShelfController.h"

#include <cstddef>
#include <variant>

#include "Velko/App/AppController.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Shelf/ShelfView.h"
#include "Velko/View/Tree.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Timing.h"

namespace velko {

namespace {

constexpr double gapBelowShelfBar = 4;  // points

}  // namespace

ShelfController::ShelfController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts),
      broom_(broom),
      panel_(parts.ports.surfaces, Surfaces::Kind::shelf),
      announcement_(parts.platform.mainThread, parts.ports.surfaces),
      placeChanges_(broom_.observePlace([this] { sync(); })) {}

void ShelfController::sync() {
    if (!parts_.controller.values().isShelfShown()) {
        typed_.clear();
        announcement_.cancel();
        panel_.close();
        return;
    }
    const auto place = broom_.placeBelow(gapBelowShelfBar);
    if (!place) {
        panel_.close();
        return;
    }
    if (!panel_.isOpen()) {
        panel_.open({.place = place,
                     .motion = motion(),
                     .takesKeyboard = !parts_.controller.values().revealedByPointer,
                     .content = content(*place),
                     .ignoresPress = [this](Point point) { return broom_.holdsUpwards(point); },
                     .dismiss = [this](Surface::Dismissal how) { return onDismiss(how); },
                     .keyPressed = [this] { parts_.controller.shelfTouched(); }});
    } else {
        panel_.update(content(*place));
        panel_.move(*place);
    }
}

Surface::Motion ShelfController::motion() const {
    if (parts_.ports.surfaces.reducesMotion()) {
        return {.fade = Timing::reducedMotionFade};
    }
    return {.springResponse = Timing::shelfSpringResponse, .springDamping = Timing::shelfSpringDamping};
}

void ShelfController::type(const std::string& text) {
    typed_ = text;
    parts_.controller.shelfTouched();
    sync();
    const auto& place = panel_.place();
    if (typed_.empty() || !place) {
        announcement_.cancel();
        return;
    }
    std::size_t tiles = 0;
    view::walk(content(*place), [&](const view::Node& node) {
        tiles += std::holds_alternative<view::Tile>(node.content) ? 1U : 0U;
    });
    announcement_.found(tiles);
}

view::Node ShelfController::content(const Surface::Place& place) {
    return shelfView({.parts = parts_,
                      .height = place.bounds.height,
                      .typed = typed_,
                      .onType = [this](const std::string& typed) { type(typed); },
                      .onOpen = [this](const BundleID& bundleID) { parts_.controller.open(bundleID); },
                      .onMove =
                          [this](const BundleID& bundleID, Section section) {
                              parts_.controller.place(bundleID, section);
                              parts_.controller.shelfTouched();
                          }});
}

bool ShelfController::onDismiss(Surface::Dismissal how) const {
    parts_.controller.closeShelf(how == Surface::Dismissal::clickOutside ? ShelfDismissal::click
                                                                         : ShelfDismissal::escape);
    return !parts_.controller.values().isShelfShown();
}

}  // namespace velko
