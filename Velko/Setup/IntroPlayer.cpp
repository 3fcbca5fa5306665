#include "Velko/Setup/IntroPlayer.h"

#include <utility>

#include "Velko/Ports/Surfaces.h"
#include "Velko/Setup/Intro.h"
#include "VelkoEngine/Background/Awaited.h"

namespace velko {

IntroPlayer::IntroPlayer(const FaceParts& parts, std::function<void()> changed)
    : platform_(parts.platform), surfaces_(parts.ports.surfaces), changed_(std::move(changed)) {}

void IntroPlayer::play() {
    began_ = platform_.mainThread.now();
    reducedMotion_ = surfaces_.reducesMotion();
    waitForChange();
}

view::Drawing IntroPlayer::picture() const {
    return Intro::at(
        {.seconds = secondsOf(platform_.mainThread.now() - began_), .reducedMotion = reducedMotion_});
}

void IntroPlayer::waitForChange() {
    const auto wait = Intro::untilChange(
        {.seconds = secondsOf(platform_.mainThread.now() - began_), .reducedMotion = reducedMotion_});
    if (!wait) {
        beat_.cancel();
        return;
    }
    beat_ = Awaited::after(platform_, "the introduction", *wait, [this] {
        waitForChange();
        changed_();
    });
}

}  // namespace velko
