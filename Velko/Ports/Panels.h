#pragma once

#include <algorithm>

#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/Time/Timing.h"

namespace velko {

// The edges of a panel, in points.
inline constexpr double panelCorner = 14;
inline constexpr double panelArrowWidth = 22;
inline constexpr double panelArrowHeight = 10;

/// The frame of a panel of that size. Its top edge is at the anchor's lower edge; its middle is below the
/// anchor's middle, or beside it by the place's shift. If it would leave the bounds, it moves as little as
/// is needed. Origin at the bottom left of the primary screen.
[[nodiscard]] constexpr Rect panelFrame(const Surface::Place& place, Size size) noexcept {
    const double wanted = place.anchor.x + (place.anchor.width - size.width) / 2 + place.shift;
    const double rightmost = std::max(place.bounds.x, place.bounds.maxX() - size.width);
    return {.x = std::clamp(wanted, place.bounds.x, rightmost),
            .y = std::max(place.anchor.y - size.height, place.bounds.y),
            .width = size.width,
            .height = size.height};
}

/// How far to the left or right of a panel's middle its arrow can be.
[[nodiscard]] constexpr double panelArrowReach(double width) noexcept {
    return std::max(0.0, width / 2 - panelCorner - panelArrowWidth / 2);
}

/// How far the tip of a panel's arrow is from the panel's left edge. It is below the middle of the anchor, or
/// as near to that as the arrow can be.
[[nodiscard]] constexpr double panelArrowTip(const Surface::Place& place, const Rect& frame) noexcept {
    const double middle = frame.width / 2;
    const double reach = panelArrowReach(frame.width);
    const double target = place.anchor.x + place.anchor.width / 2 - frame.x;
    return std::clamp(target, middle - reach, middle + reach);
}

/// The frame of a panel that is sliding out from under the menu bar. Its top edge does not move, so that it
/// never covers the bar. `position` goes from 0 to 1 and may swing past 1. Origin at the bottom left.
[[nodiscard]] constexpr Rect panelSlidOut(const Rect& atRest, double position) noexcept {
    constexpr double slide = 24;  // points
    const double missing = std::min(slide * (1 - position), atRest.height / 2);
    return {.x = atRest.x, .y = atRest.y + missing, .width = atRest.width, .height = atRest.height - missing};
}

/// The movement of a spring that comes to rest: from 0 to 1 over time.
class SpringCurve final {
 public:
    /// `response`: how long one swing takes; zero or less: it rests at once. `damping`: from 0 (it
    /// swings for a long time) to 1 (it never swings past its rest); less than a tenth counts as a tenth.
    SpringCurve(Timing::Seconds response, double damping) noexcept;

    /// Its position at a time after its release; exactly 1 from `duration` on.
    [[nodiscard]] double at(Timing::Seconds time) const noexcept;

    /// The time until it stays within a thousandth of its rest.
    [[nodiscard]] Timing::Seconds duration() const noexcept { return duration_; }

 private:
    double frequency_ = 0;  // radians per second
    double damping_ = 1;
    Timing::Seconds duration_{};
};

}  // namespace velko
