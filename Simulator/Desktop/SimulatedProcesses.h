#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Simulator/Machine/SimulatedApp.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Processes.h"

namespace velko {

/// A process of the simulated machine.
struct SimulatedProcess {
    ProcessID pid = 0;
    SimulatedApp app{};
    double cores = 0;                      ///< how many it keeps busy
    MainThread::Uptime cpuTime{0};         ///< what it had used when that last changed
    MainThread::Uptime since{0};           ///< when that was
    std::uint64_t memoryBytes = 40 << 20;  ///< its footprint
};

/// The table of processes. Time is counted as on Apple silicon, in units of 125 / 3 nanoseconds. What the
/// port offers may be asked on any thread; the machine itself lives on the main thread.
class SimulatedProcesses final : public Processes {
 public:
    explicit SimulatedProcesses(const MainThread& mainThread) : mainThread_(mainThread) {}

    [[nodiscard]] ProcessID ownPID() const override { return ownPID_; }
    /// Newest first; the kernel itself stands last, as process 0.
    [[nodiscard]] std::optional<std::vector<ProcessID>> list() const override;
    [[nodiscard]] std::optional<std::string> name(ProcessID pid) const override;
    /// A quarter of the time counts as the system's.
    [[nodiscard]] std::optional<ResourceUsage> resourceUsage(ProcessID pid) const override;
    [[nodiscard]] TimeBase timeBase() const override { return {.numerator = 125, .denominator = 3}; }
    [[nodiscard]] NullSignal nullSignal(ProcessID pid) const override;
    /// The processes that the workspace lists under an identifier, oldest first. Any thread.
    [[nodiscard]] std::vector<ProcessID> applications(const BundleID& bundleID) const;

    /// Starts a process under a number that was never used before.
    ProcessID start(SimulatedApp app);
    /// Ends a process, if it runs.
    void end(ProcessID pid);
    /// From now on, and until the next such call, a process keeps that many cores busy.
    void work(ProcessID pid, double cores);
    void setMemory(ProcessID pid, std::uint64_t bytes);
    /// Says which process this program is.
    void setOwn(ProcessID pid) noexcept { ownPID_ = pid; }

    [[nodiscard]] const SimulatedProcess* find(ProcessID pid) const;
    [[nodiscard]] std::optional<ProcessID> oldestNamed(const std::string& processName) const;
    /// The running processes, oldest first.
    [[nodiscard]] const std::vector<SimulatedProcess>& running() const noexcept { return running_; }

 private:
    static constexpr ProcessID firstPID = 301;

    [[nodiscard]] SimulatedProcess* editable(ProcessID pid);
    [[nodiscard]] MainThread::Uptime cpuTime(const SimulatedProcess& process) const;

    const MainThread& mainThread_;
    mutable std::mutex mutex_;  // guards the table against other threads; only the main thread writes it
    ProcessID nextPID_ = firstPID;
    ProcessID ownPID_ = 0;
    std::vector<SimulatedProcess> running_;
};

}  // namespace velko
