#include "Velko/Message/MessageController.h"

#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Time/Timing.h"

namespace velko {

namespace {

// Points
constexpr double messageGap = 4;
constexpr double messagePadding = 14;
constexpr double messageIconWidth = 24;
constexpr double mostMessageWidth = 360;

}  // namespace

MessageController::MessageController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts),
      broom_(broom),
      panel_(parts.ports.surfaces, Surfaces::Kind::message),
      placeChanges_(broom_.observePlace([this] { sync(); })) {}

void MessageController::sync() {
    const AppValues& values = parts_.controller.values();
    const auto& failed = values.failedOpening;
    const auto place = broom_.placeBelow(messageGap);
    const bool isNews = said_ != failed;
    said_ = failed;
    if (failed && isNews) {
        parts_.ports.surfaces.announce(describe(*failed, AppNames(values, parts_.platform.workspace)));
    }
    if (!failed || !place || values.isShelfShown()) {
        panel_.close();
    } else if (!panel_.isOpen()) {
        const bool isStill = parts_.ports.surfaces.reducesMotion();
        panel_.open({.place = place,
                     .motion = {.fade = isStill ? Timing::Seconds::zero() : Timing::reducedMotionFade},
                     .content = content()});
    } else {
        panel_.update(content());
        panel_.move(*place);
    }
}

view::Node MessageController::content() const {
    const AppValues& values = parts_.controller.values();
    const AppNames names(values, parts_.platform.workspace);
    view::Node icon{.id = "message:icon",
                    .content = view::AppIcon{.bundleID = said_ ? said_->bundleID : BundleID(),
                                             .points = messageIconWidth}};
    view::Node words = view::text("message:text", said_ ? describe(*said_, names) : "");
    words.width = mostMessageWidth;
    view::Node row = view::row("message", {std::move(icon), std::move(words)});
    std::get<view::Stack>(row.content).padding = messagePadding;
    return row;
}

}  // namespace velko
