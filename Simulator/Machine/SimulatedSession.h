#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

/// The time zone of the machine. The C library has one zone for the whole process, so this is the only place
/// that changes it, and only one machine at a time may. Main thread, while no other thread reads the
/// environment.
class SimulatedZone final : private NonCopyable {
 public:
    SimulatedZone() = default;
    /// Gives the process its old zone back.
    ~SimulatedZone();

    /// Takes the machine to a zone, for instance "Pacific/Auckland". Programs are not told: each counts in
    /// its old zone until it reads the zone again.
    void set(const std::string& name);

    /// A program starts, and reads the zone.
    static void readAtLaunch();

 private:
    bool isChanged_ = false;
    std::optional<std::string> before_;  ///< what the process had been told; nothing: nothing
};

class MachineThread;
class SimulatedAccessibility;
class SimulatedMainThread;
class SimulatedWorkspace;

/// What happens to the whole session: the Mac sleeps, and Spaces and users change. For a moment after each of
/// these, all apps are busy and answer late.
class SimulatedSession final {
 public:
    /// The parts that a session uses. They outlive it.
    struct Parts {
        SimulatedMainThread& clock;
        MachineThread& thread;
        SimulatedAccessibility& accessibility;
        SimulatedWorkspace& workspace;
    };

    explicit SimulatedSession(const Parts& parts) : parts_(parts) {}

    void sleepAndWake(std::chrono::milliseconds duration);
    /// Only the displays sleep, as they do when nobody has touched the Mac for a while.
    void sleepDisplays();
    void wakeDisplays();
    void changeSpace();
    /// Another user comes to the Mac while this one stays logged in.
    void leaveToOther();
    void returnToUser();
    /// Whether the displays are awake and show this user's session.
    [[nodiscard]] bool isAttended() const noexcept { return !areDisplaysAsleep_ && !isElsewhere_; }
    /// No app answers for that long.
    void stall(std::chrono::milliseconds duration);
    /// Apps answer late for a moment, as they do whenever much has changed.
    void keepAppsBusy();

 private:
    void keepAppsBusy(MainThread::Uptime delay, MainThread::Uptime duration);
    void tell(WorkspaceNotice::Kind kind);

    Parts parts_;
    bool areDisplaysAsleep_ = false;
    bool isElsewhere_ = false;  ///< another user is at the Mac
    MainThread::Uptime busyUntil_{0};
    MainThread::Uptime busyBy_{0};  ///< how late apps answer until then
};

}  // namespace velko
