#pragma once

namespace velko {

/// How a spring comes to rest: from 0 to 1 over time.
class SpringCurve final {
 public:
    /// `response`: how long one swing takes, in seconds; 0 or less: at rest at once. `damping`: from 0 (it
    /// swings on and on) to 1 (it never overshoots); less than a tenth counts as a tenth.
    SpringCurve(double response, double damping) noexcept;

    /// Where it is that many seconds after its release; exactly 1 from `duration` on.
    [[nodiscard]] double at(double seconds) const noexcept;

    /// Seconds until it stays within a thousandth of its rest.
    [[nodiscard]] double duration() const noexcept { return duration_; }

 private:
    double frequency_ = 0;  // radians per second
    double damping_ = 1;
    double duration_ = 0;
};

}  // namespace velko
