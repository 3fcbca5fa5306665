#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace velko {

/// Tells from the work of the system's renderer whether an iPhone Live Activity is on screen: drawing one
/// keeps the renderer busy, and between two updates of one it may rest for minutes. A value.
class LiveActivityDetector {
 public:
    /// One reading. All times are seconds on the same monotonic clock.
    struct Request {
        std::optional<std::int32_t> pid;   ///< absent when no renderer runs
        std::uint64_t cpuNanoseconds = 0;  ///< the renderer's CPU time since it began
        double at;
        std::optional<double> lastOwnChange = {};  ///< of the bar by Velko, which costs work as well
    };

    /// Takes a reading and tells whether a Live Activity counts as showing.
    bool record(const Request& request);

    /// The verdict at a time without a reading.
    [[nodiscard]] bool isShowing(double at) const noexcept;

 private:
    struct Work {
        double at;
        std::uint64_t work;  ///< nanoseconds of CPU time since the reading before
    };

    void countWork(const Request& request);
    [[nodiscard]] bool isBusy() const noexcept;

    std::optional<std::int32_t> pid_;
    std::uint64_t cpu_ = 0;
    std::vector<Work> recent_;
    std::optional<double> lastBusy_;
};

}  // namespace velko
