#include "Simulator/Machine/SimulatedSession.h"

#include <cstdlib>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

namespace {

constexpr auto variable = "TZ";

}  // namespace

// NOLINTBEGIN(concurrency-mt-unsafe): the header says on which thread, and when
SimulatedZone::~SimulatedZone() {
    if (!isChanged_) {
        return;
    }
    if (before_) {
        setenv(variable, before_->c_str(), 1);
    } else {
        unsetenv(variable);
    }
    Calendar::rereadZone();
}

void SimulatedZone::set(const std::string& name) {
    if (!isChanged_) {
        isChanged_ = true;
        if (const char* before = std::getenv(variable)) {
            before_ = before;
        }
    }
    setenv(variable, name.c_str(), 1);
}
// NOLINTEND(concurrency-mt-unsafe)

void SimulatedZone::readAtLaunch() {
    Calendar::rereadZone();
}

namespace {

constexpr auto lateAnswer = std::chrono::milliseconds(5);
constexpr auto busyTime = std::chrono::seconds(1);
constexpr auto longerThanAnybodyWaits = std::chrono::hours(1);

}  // namespace

void SimulatedSession::keepAppsBusy() {
    keepAppsBusy(lateAnswer, busyTime);
}

void SimulatedSession::stall(std::chrono::milliseconds duration) {
    keepAppsBusy(longerThanAnybodyWaits, duration);
}

void SimulatedSession::keepAppsBusy(MainThread::Uptime delay, MainThread::Uptime duration) {
    const auto now = parts_.thread.now();
    const auto until = now + duration;
    if (now < busyUntil_ && delay < busyBy_) {
        return;  // the apps are already busier
    }
    busyUntil_ = until;
    busyBy_ = delay;
    parts_.accessibility.setLoad(delay);
    parts_.thread.happen(duration, [this, until] {
        if (busyUntil_ == until) {  // nothing else has made them busy again
            parts_.accessibility.setLoad({});
        }
    });
}

void SimulatedSession::sleepAndWake(std::chrono::milliseconds duration) {
    parts_.clock.sleepFor(duration);
    keepAppsBusy();
    areDisplaysAsleep_ = false;
    tell(WorkspaceNotice::Kind::didWake);
    tell(WorkspaceNotice::Kind::screensDidWake);
}

void SimulatedSession::sleepDisplays() {
    areDisplaysAsleep_ = true;
    tell(WorkspaceNotice::Kind::screensDidSleep);
}

void SimulatedSession::wakeDisplays() {
    keepAppsBusy();
    areDisplaysAsleep_ = false;
    tell(WorkspaceNotice::Kind::screensDidWake);
}

void SimulatedSession::leaveToOther() {
    isElsewhere_ = true;
    tell(WorkspaceNotice::Kind::sessionResignedActive);
}

void SimulatedSession::changeSpace() {
    keepAppsBusy();
    areDisplaysAsleep_ = isElsewhere_ = false;
    tell(WorkspaceNotice::Kind::activeSpaceChanged);
}

void SimulatedSession::returnToUser() {
    keepAppsBusy();
    areDisplaysAsleep_ = isElsewhere_ = false;
    tell(WorkspaceNotice::Kind::sessionBecameActive);
}

void SimulatedSession::tell(WorkspaceNotice::Kind kind) {
    parts_.workspace.tell({.kind = kind});
}

}  // namespace velko
