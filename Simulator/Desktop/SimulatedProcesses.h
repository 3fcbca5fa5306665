#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Processes.h"

namespace velko {

/// One icon that an app puts into the menu bar. A member without a value is an attribute that the icon's
/// element does not have.
struct SimulatedIcon {
    std::optional<std::string> title{};
    std::optional<std::string> description{};
    std::optional<std::string> help{};
    std::optional<std::string> identifier{};
    std::variant<std::monostate, std::string, double> value{};
    double width = 30;                ///< points
    std::optional<int> systemItem{};  ///< set for one of the system's own items: its number in configurations
};

/// A program to run on the simulated Mac.
struct SimulatedApp {
    BundleID bundleID{};                      ///< empty: it has none
    std::string name{};                       ///< empty: it has no localized name
    std::vector<SimulatedIcon> icons{};       ///< right to left
    std::optional<std::string> bundlePath{};  ///< left out: "/Applications/<name>.app"; empty: it has none
    std::string processName{};                ///< empty: the same as `name`
    bool isForeign = false;     ///< it belongs to another user, so the kernel says little about it
    bool isApplication = true;  ///< false: a process that the workspace does not list
    bool isRegular =
        false;  ///< its launch and its end are announced; those of an agent only show in the list

    // The programs with which every Mac starts.
    static constexpr auto menuBarHostName = "MenuBarAgent";
    static constexpr int clockItem = 0;  ///< the number of the clock among the system's items
    /// The menu bar's host, with the system's own items.
    [[nodiscard]] static SimulatedApp menuBarAgent();
    [[nodiscard]] static SimulatedApp systemUIServer();
    /// Velko with its broom.
    [[nodiscard]] static SimulatedApp velkoItself();
};

/// A process of the simulated machine.
struct SimulatedProcess {
    ProcessID pid = 0;
    SimulatedApp app{};
    double cores = 0;                      ///< how many it keeps busy
    MainThread::Uptime cpuTime{0};         ///< the time that it had used when `cores` last changed
    MainThread::Uptime since{0};           ///< when that was
    std::uint64_t memoryBytes = 40 << 20;  ///< its footprint
};

/// The table of processes. Time is counted as on Apple silicon, in units of 125 / 3 nanoseconds. The port's
/// functions may be called on any thread, the others on the main thread only.
class SimulatedProcesses final : public Processes {
 public:
    explicit SimulatedProcesses(const MainThread& mainThread) : mainThread_(mainThread) {}

    [[nodiscard]] ProcessID ownPID() const override { return ownPID_; }
    /// Newest first; the kernel itself stands last, as process 0.
    [[nodiscard]] std::optional<std::vector<ProcessID>> list() const override;
    [[nodiscard]] std::optional<std::string> name(ProcessID pid) const override;
    /// A quarter of the time is reported as system time.
    [[nodiscard]] std::optional<ResourceUsage> resourceUsage(ProcessID pid) const override;
    [[nodiscard]] TimeBase timeBase() const override { return {.numerator = 125, .denominator = 3}; }
    [[nodiscard]] NullSignal nullSignal(ProcessID pid) const override;
    /// The processes that the workspace lists under an identifier, oldest first. Any thread.
    [[nodiscard]] std::vector<ProcessID> applications(const BundleID& bundleID) const;

    /// Starts a process under a number that was never used before.
    ProcessID start(SimulatedApp app);
    /// Ends a process, if it runs.
    void end(ProcessID pid);
    /// Until the next call, the process keeps that many cores busy.
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
