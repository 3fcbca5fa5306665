#include "VelkoEngine/Watching/SystemEvents.h"

#include <utility>

#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/Displays.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

SystemEvents::SystemEvents(const Platform& platform, Handler handler)
    : mainThread_(platform.mainThread),
      workspace_(platform.workspace),
      roll_(platform.workspace.runningApplications()),
      handler_(std::move(handler)) {
    observers_.push_back(platform.displays.observeChanges([this] { note("displays changed", true); }));
    observers_.push_back(platform.workspace.observe([this](const WorkspaceNotice& notice) { hear(notice); }));
}

void SystemEvents::hear(const WorkspaceNotice& notice) {
    using enum WorkspaceNotice::Kind;
    switch (notice.kind) {
        case didWake:
            note("wake", true);
            std::erase_if(settling_, [](const Task& task) { return !task.isPending(); });
            settling_.push_back(
                mainThread_.after(Timing::wakeSettleDelay, [this] { note("wake settled", true); }));
            break;
        case screensDidWake: note("screens woke", true); break;
        case activeSpaceChanged: note("Space changed", true); break;
        case sessionBecameActive: note("session active", true); break;
        case launched:
        case terminated:
            note(roll_.compare(workspace_.runningApplications()));
            note(roll_.hear(notice));
            break;
        case listChanged: note(roll_.compare(workspace_.runningApplications())); break;
        case activated: break;
    }
}

void SystemEvents::note(const ProcessRoll::Events& events) {
    for (const ProcessRoll::Event& event : events) {
        note((event.isLaunch ? "launched " : "quit ") + event.app, false);
    }
}

void SystemEvents::note(std::string reason, bool environment) {
    pendingReasons_.push_back(std::move(reason));
    pendingEnvironment_ = pendingEnvironment_ || environment;
    pending_ = mainThread_.after(Timing::systemEventDebounce, [this] { deliver(); });
}

void SystemEvents::deliver() {
    Kind kind{.scope = pendingEnvironment_ ? Kind::Scope::environment : Kind::Scope::apps, .reason = {}};
    const char* separator = "";
    for (const std::string& reason : std::exchange(pendingReasons_, {})) {
        kind.reason += separator + reason;
        separator = ", ";
    }
    pendingEnvironment_ = false;
    roll_.beginBurst();
    handler_(kind);
}

}  // namespace velko
