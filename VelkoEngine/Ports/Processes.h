#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

/// What the kernel has counted for one process.
struct ResourceUsage {
    std::uint64_t userTime = 0;           ///< since the process began, in units of the time base
    std::uint64_t systemTime = 0;         ///< likewise
    std::uint64_t physicalFootprint = 0;  ///< bytes

    bool operator==(const ResourceUsage&) const = default;
};

/// The kernel's unit of time: `numerator` / `denominator` nanoseconds.
struct TimeBase {
    std::uint32_t numerator = 0;
    std::uint32_t denominator = 0;

    bool operator==(const TimeBase&) const = default;
};

/// How the kernel answers the null signal, which only asks whether a process exists.
enum class NullSignal { delivered, notPermitted, noSuchProcess };

/// The kernel's list of processes. Any thread.
class Processes : private NonCopyable {
 public:
    virtual ~Processes() = default;

    /// This process.
    [[nodiscard]] virtual ProcessID ownPID() const = 0;

    /// Every process that the kernel lists, in its order; nothing when the listing fails. Entries may be
    /// zero or negative.
    [[nodiscard]] virtual std::optional<std::vector<ProcessID>> list() const = 0;

    /// A process's short name; bytes that are not UTF-8 are replaced. Nothing when it is gone.
    [[nodiscard]] virtual std::optional<std::string> name(ProcessID pid) const = 0;

    /// What a process has used; nothing when it is gone or out of reach.
    [[nodiscard]] virtual std::optional<ResourceUsage> resourceUsage(ProcessID pid) const = 0;

    /// The unit of the times above; it never changes. Zeros when the kernel does not say.
    [[nodiscard]] virtual TimeBase timeBase() const = 0;

    /// Asks whether a process exists, without touching it. `pid` is above 0.
    [[nodiscard]] virtual NullSignal nullSignal(ProcessID pid) const = 0;

    /// Whether a process exists. A process that may not be signalled exists too. `pid` is above 0.
    [[nodiscard]] bool exists(ProcessID pid) const { return nullSignal(pid) != NullSignal::noSuchProcess; }
};

namespace ProcessStats {

/// A process's cumulative CPU time and its memory footprint; nothing when it is gone, out of reach, or its
/// figures make no sense. Any thread.
[[nodiscard]] std::optional<ProcessSample> sample(const Platform& platform, ProcessID pid);

}  // namespace ProcessStats

}  // namespace velko
