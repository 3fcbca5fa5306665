#import "Velko/mac/PanelMotion.h"

#include <algorithm>
#include <chrono>

#include "Velko/Ports/PanelPlacement.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

constexpr std::chrono::milliseconds frameTime{16};

}  // namespace

PanelMotion::PanelMotion(MainThread& mainThread, const Surface::Motion& motion, NSWindow* panel,
                         NSRect target)
    : mainThread_(mainThread),
      spring_(motion.springResponse, motion.springDamping),
      fade_(std::max(motion.fade, 0.0)),
      panel_(panel),
      target_(target),
      start_(mainThread.now()) {
    draw(0);
    if (spring_.duration() > 0 || fade_ > 0) {
        steps_ = mainThread_.every(frameTime, [this] { step(); });
    }
}

void PanelMotion::setTarget(NSRect target) {
    target_ = target;
    step();
}

void PanelMotion::step() {
    const double seconds = std::chrono::duration<double>(mainThread_.now() - start_).count();
    draw(seconds);
    if (seconds >= std::max(spring_.duration(), fade_)) {
        steps_ = Task();
    }
}

void PanelMotion::draw(double seconds) {
    [panel_ setFrame:native(panelSlidOut(portable(target_), spring_.at(seconds))) display:YES];
    panel_.alphaValue =
        fade_ > 0 ? std::min(seconds / fade_, 1.0) : std::clamp(spring_.at(seconds), 0.0, 1.0);
}

}  // namespace velko
