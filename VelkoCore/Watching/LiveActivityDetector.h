#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

/// Tells from the work of the system's renderer whether an iPhone Live Activity is on screen: drawing one
/// keeps the renderer busy, and between two updates of one it may rest for minutes. A value.
class LiveActivityDetector {
 public:
    /// One reading.
    struct Reading {
        std::optional<ProcessID> pid;      ///< absent when no renderer runs
        std::uint64_t cpuNanoseconds = 0;  ///< the renderer's CPU time since it began
        Uptime at{};
        std::optional<Uptime> lastOwnChange = {};  ///< of the bar by Velko, which costs work as well
    };

    /// Takes a reading and tells whether a Live Activity counts as showing.
    bool record(const Reading& reading);

    /// The verdict at a time without a reading.
    [[nodiscard]] bool isShowing(Uptime at) const noexcept;

 private:
    struct Work {
        Uptime at;
        std::uint64_t work;  ///< nanoseconds of CPU time since the reading before
    };

    void countWork(const Reading& reading);
    [[nodiscard]] bool isBusy() const noexcept;

    std::optional<ProcessID> pid_;
    std::uint64_t cpu_ = 0;
    std::vector<Work> recent_;
    std::optional<Uptime> lastBusy_;
};

}  // namespace velko
