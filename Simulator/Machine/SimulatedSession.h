#pragma once

#include <chrono>

#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

class MachineThread;
class SimulatedAccessibility;
class SimulatedMainThread;
class SimulatedWorkspace;

/// What happens to the whole session: the Mac sleeps, Spaces and users change. For a moment after each of
/// these every app has much to do, and answers late.
class SimulatedSession final {
 public:
    /// What a session is made of. All outlive it.
    struct Parts {
        SimulatedMainThread& clock;
        MachineThread& thread;
        SimulatedAccessibility& accessibility;
        SimulatedWorkspace& workspace;
    };

    explicit SimulatedSession(const Parts& parts) : parts_(parts) {}

    void sleepAndWake(std::chrono::milliseconds duration);
    void changeSpace();
    void returnToUser();
    /// For so long no app answers anything.
    void stall(std::chrono::milliseconds duration);
    /// Apps answer late for a moment, as they do whenever much has changed.
    void keepAppsBusy();

 private:
    void keepAppsBusy(MainThread::Uptime delay, MainThread::Uptime duration);
    void tell(WorkspaceNotice::Kind kind);

    Parts parts_;
    MainThread::Uptime busyUntil_{0};
    MainThread::Uptime busyBy_{0};  ///< how late apps answer until then
};

}  // namespace velko
