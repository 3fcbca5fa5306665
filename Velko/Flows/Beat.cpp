#include "Velko/Flows/Beat.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

Beat::Beat(const Platform& platform)
    : mainThread_(platform.mainThread),
      notices_(platform.workspace.observe([this](const WorkspaceNotice& notice) { hear(notice); })) {}

void Beat::add(Loop loop) {
    members_.push_back({.loop = std::move(loop)});
}

void Beat::start() {
    hasStarted_ = true;
    origin_ = mainThread_.now();
    reconsider();
}

void Beat::reconsider() {
    if (!hasStarted_ || isBeating_) {
        return;  // a beat ends with this
    }
    for (Member& member : members_) {
        const bool wasAtWork = std::exchange(member.isAtWork, member.loop.hasWork());
        if (member.isAtWork && !wasAtWork) {
            member.due = nextTurn(member.loop);
        } else if (wasAtWork && !member.isAtWork && member.loop.rest) {
            member.loop.rest();
        }
    }
    arm();
}

// Whether anybody is at the Mac

void Beat::hear(const WorkspaceNotice& notice) {
    using enum WorkspaceNotice::Kind;
    switch (notice.kind) {
        case screensDidSleep: setAway(true, sessionElsewhere_); break;
        case sessionResignedActive: setAway(screensAsleep_, true); break;
        case didWake:
        case screensDidWake: setAway(false, sessionElsewhere_); break;
        case activeSpaceChanged:
        case sessionBecameActive: setAway(false, false); break;
        case launched:
        case terminated:
        case activated:
        case listChanged: break;
    }
}

void Beat::userIsThere() {
    setAway(false, false);
}

void Beat::setAway(bool screensAsleep, bool sessionElsewhere) {
    const bool wasAway = isAway();
    screensAsleep_ = screensAsleep;
    sessionElsewhere_ = sessionElsewhere;
    if (isAway() != wasAway) {
        arm();
    }
}

// The timer

/// Turns are multiples of the period, whenever the work began, so that those of all loops fall together.
Beat::Uptime Beat::nextTurn(const Loop& loop) const {
    return origin_ + ((mainThread_.now() - origin_) / loop.period + 1) * loop.period;
}

void Beat::beat() {
    isBeating_ = true;
    const Uptime now = mainThread_.now();
    for (Member& member : members_) {
        if (member.isAtWork && member.due - member.loop.early <= now) {
            // A turn that was taken early is not taken again, and one turn makes good for all that were
            // missed.
            member.due = member.due > now ? member.due + member.loop.period : nextTurn(member.loop);
            member.loop.run();
        }
    }
    isBeating_ = false;
    reconsider();
}

void Beat::arm() {
    std::optional<Uptime> next;
    for (const Member& member : members_) {
        if (member.isAtWork && !isAway()) {
            const Uptime latest = member.due + member.loop.late;
            next = std::min(next.value_or(latest), latest);
        }
    }
    if (!next) {
        timer_.cancel();
        return;
    }
    if (timer_.isPending() && *next == armedFor_) {
        return;
    }
    armedFor_ = *next;
    // Of all timers only a repeating one may come a little late, so that the machine can wake for others too.
    timer_ = mainThread_.every(std::max(*next - mainThread_.now(), Uptime{1}), [this] { beat(); });
}

}  // namespace velko
