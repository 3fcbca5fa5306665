#include "Velko/Setup/IntroPlayer.h"

#include <utility>

#include "Velko/Ports/Surfaces.h"
#include "Velko/Setup/Intro.h"

namespace velko {

IntroPlayer::IntroPlayer(const FaceParts& parts, std::function<void()> changed)
    : mainThread_(parts.platform.mainThread), surfaces_(parts.ports.surfaces), changed_(std::move(changed)) {}

void IntroPlayer::play() {
    began_ = mainThread_.now();
    reducedMotion_ = surfaces_.reducesMotion();
    waitForChange();
}

view::Drawing IntroPlayer::picture() const {
    return Intro::at({.seconds = secondsOf(mainThread_.now() - began_), .reducedMotion = reducedMotion_});
}

void IntroPlayer::waitForChange() {
    const auto wait = Intro::untilChange(
        {.seconds = secondsOf(mainThread_.now() - began_), .reducedMotion = reducedMotion_});
    if (!wait) {
        beat_.cancel();
        return;
    }
    beat_ = mainThread_.after(*wait, [this] {
        waitForChange();
        changed_();
    });
}

}  // namespace velko
