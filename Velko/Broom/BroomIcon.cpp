#include "Velko/Broom/BroomIcon.h"

#include <chrono>
#include <cmath>
#include <utility>

#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"

namespace velko {

namespace {

constexpr std::chrono::milliseconds framePeriod{50};

/// How far a rock has still to go, as a fraction, from 1 at its start to 0 at its end: a spring let go at
/// rest, which swings past its goal by a fifth and settles.
double left(double progress) {
    constexpr double damping = 4.0;
    constexpr double turns = 8.303;  // radians; the spring passes its goal for the third time at the end
    return std::exp(-damping * progress) *
           (std::cos(turns * progress) + damping / turns * std::sin(turns * progress));
}

}  // namespace

BroomIcon::BroomIcon(StatusItem& item, const Surfaces& surfaces, const Platform& platform)
    : item_(item), surfaces_(surfaces), platform_(platform) {
    draw();
}

void BroomIcon::setDot(bool shows) {
    // While it rocks, the next picture shows it.
    if (std::exchange(showsDot_, shows) != shows && !animation_.isPending()) {
        draw();
    }
}

void BroomIcon::lean(bool over) {
    const Rock rock{
        .start = platform_.mainThread.now(), .from = angle_, .to = over ? Timing::broomRockDegrees : 0};
    animation_.cancel();
    if (surfaces_.reducesMotion() && rock.from != rock.to) {
        angle_ = rock.to;
        draw();
    } else if (rock.from != rock.to) {
        animation_ = Awaited::every(platform_, "the broom", framePeriod, [this, rock] { swing(rock); });
    }
}

void BroomIcon::swing(Rock rock) {
    const double progress = secondsOf(platform_.mainThread.now() - rock.start) / Timing::broomRockDuration;
    if (progress < 1) {
        angle_ = rock.to + (rock.from - rock.to) * left(progress);
    } else {
        animation_.cancel();
        angle_ = rock.to;
    }
    draw();
}

void BroomIcon::draw() {
    view::Drawing drawing = BroomDrawing::icon({.tilt = angle_, .hasDot = showsDot_});
    if (drawing != drawn_) {
        item_.setImage(drawing);
        drawn_ = std::move(drawing);
    }
}

}  // namespace velko
