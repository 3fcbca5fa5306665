#include "Velko/Ports/Panels.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velko {

namespace {

constexpr double weakestDamping = 0.1;
constexpr double atRest = 0.001;
/// A spring that never swings past its rest follows (1 + x) * exp(-x), which is below `atRest` from this x
/// on.
constexpr double criticalRest = 9.24;

}  // namespace

SpringCurve::SpringCurve(Timing::Seconds response, double damping) noexcept
    : damping_(std::clamp(damping, weakestDamping, 1.0)) {
    if (response <= Timing::Seconds::zero()) {
        return;
    }
    frequency_ = 2 * std::numbers::pi / response.count();
    if (damping_ < 1) {
        // The swings stay below a curve that starts at 1 / sqrt(1 - damping²) and falls.
        duration_ = Timing::Seconds(
            std::min(-std::log(atRest * std::sqrt(1 - damping_ * damping_)) / (damping_ * frequency_),
                     criticalRest / (damping_ * frequency_)));
    } else {
        duration_ = Timing::Seconds(criticalRest / frequency_);
    }
}

double SpringCurve::at(Timing::Seconds since) const noexcept {
    if (since >= duration_) {
        return 1;
    }
    const double time = std::max(since.count(), 0.0);
    const double decay = std::exp(-damping_ * frequency_ * time);
    if (damping_ >= 1) {
        return 1 - decay * (1 + frequency_ * time);
    }
    const double swing = frequency_ * std::sqrt(1 - damping_ * damping_);
    return 1 - decay * (std::cos(swing * time) + damping_ * frequency_ / swing * std::sin(swing * time));
}

}  // namespace velko
