#include "Velko/Broom/BroomIcon.h"

#include <chrono>
#include <cmath>
#include <utility>

#include "VelkoCore/Timing.h"

namespace velko {

namespace {

constexpr std::chrono::microseconds framePeriod{16'667};

/// How far a rock has still to go, as a fraction, from 1 at its start to 0 at its end: a spring let go at
/// rest, which swings past its goal by a fifth and settles.
double left(double progress) {
    constexpr double damping = 4.0;
    constexpr double turns = 8.303;  // radians; the spring passes its goal for the third time at the end
    return std::exp(-damping * progress) *
           (std::cos(turns * progress) + damping / turns * std::sin(turns * progress));
}

}  // namespace

BroomIcon::BroomIcon(StatusItem& item, const Surfaces& surfaces, MainThread& mainThread)
    : item_(item), surfaces_(surfaces), mainThread_(mainThread) {
    draw();
}

void BroomIcon::setDot(bool shows) {
    if (std::exchange(showsDot_, shows) != shows) {
        draw();
    }
}

void BroomIcon::lean(bool over) {
    const Rock rock{.start = mainThread_.now(), .from = angle_, .to = over ? Timing::broomRockDegrees : 0};
    animation_.cancel();
    if (surfaces_.reducesMotion() && rock.from != rock.to) {
        angle_ = rock.to;
        draw();
    } else if (rock.from != rock.to) {
        animation_ = mainThread_.every(framePeriod, [this, rock] { swing(rock); });
    }
}

void BroomIcon::swing(Rock rock) {
    const double progress = secondsOf(mainThread_.now() - rock.start) / Timing::broomRockDuration;
    if (progress < 1) {
        angle_ = rock.to + (rock.from - rock.to) * left(progress);
    } else {
        animation_.cancel();
        angle_ = rock.to;
    }
    draw();
}

void BroomIcon::draw() {
    item_.setImage(BroomDrawing::icon({.tilt = angle_, .hasDot = showsDot_}));
}

}  // namespace velko
