#pragma once

#include <optional>

#include "Velko/View/Drawing.h"
#include "VelkoCore/Time/Timing.h"

/// How the broom introduces itself: it sweeps in, swishes, sparkles, blinks, hops and wipes the picture,
/// which leaves suds that pop one by one. Pure functions of time.
namespace velko::Intro {

struct Moment {
    double seconds = 0;  ///< since the introduction began
    bool reducedMotion = false;
};

/// The picture at a moment; with less motion, the broom among its suds fades in and stays.
[[nodiscard]] view::Drawing at(const Moment& moment);

/// The broom among its suds, as it stands with less motion.
[[nodiscard]] view::Drawing still();

/// How long until the picture changes; nothing once it stays as it is.
[[nodiscard]] std::optional<Timing::Duration> untilChange(const Moment& moment);

}  // namespace velko::Intro
