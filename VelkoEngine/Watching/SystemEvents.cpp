#include "VelkoEngine/Watching/SystemEvents.h"

#include <algorithm>
#include <utility>

#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Screen.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

constexpr auto unknown = "?";

}  // namespace

ProcessRoll::ProcessRoll(const std::vector<RunningApplication>& listed) {
    static_cast<void>(compare(listed));
}

ProcessRoll::Events ProcessRoll::compare(const std::vector<RunningApplication>& listed) {
    Events events;
    std::map<ProcessID, std::string> present;
    for (const RunningApplication& app : listed) {
        present.emplace(app.pid, app.bundleID.value_or(unknown));
    }
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        const auto found = present.find(entry->first);
        const bool isThere = found != present.end() && found->second == entry->second.app;
        if (isThere || !entry->second.isListed) {
            entry->second.isListed = isThere || entry->second.isListed;
            ++entry;
            continue;
        }
        if (!entry->second.hasEnded) {
            events.push_back({.isLaunch = false, .app = entry->second.app});
            ended_.push_back({.pid = entry->first, .app = entry->second.app});
        }
        entry = entries_.erase(entry);
    }
    for (const RunningApplication& app : listed) {
        Entry entry{.app = app.bundleID.value_or(unknown), .isListed = true};
        if (Inventory::mayHaveItems(app) && !entries_.contains(app.pid)) {
            events.push_back({.isLaunch = true, .app = entry.app});
            entries_.emplace(app.pid, std::move(entry));
        }
    }
    return events;
}

ProcessRoll::Events ProcessRoll::hear(const WorkspaceNotice& notice) {
    return notice.kind == WorkspaceNotice::Kind::launched ? hearLaunch(notice) : hearEnd(notice);
}

ProcessRoll::Events ProcessRoll::hearLaunch(const WorkspaceNotice& notice) {
    Entry entry{.app = notice.bundleID.value_or(unknown)};
    Event event{.isLaunch = true, .app = entry.app};
    const bool isNew = !notice.pid || entries_.emplace(*notice.pid, std::move(entry)).second;
    return isNew ? Events{std::move(event)} : Events{};
}

ProcessRoll::Events ProcessRoll::hearEnd(const WorkspaceNotice& notice) {
    if (isKnownEnd(notice)) {
        return {};
    }
    const auto entry = notice.pid ? entries_.find(*notice.pid) : entries_.end();
    if (entry != entries_.end()) {
        if (std::exchange(entry->second.hasEnded, true)) {
            return {};
        }
        ended_.push_back({.pid = entry->first, .app = entry->second.app});
        if (!entry->second.isListed) {
            entries_.erase(entry);
        }
    }
    return {{.isLaunch = false, .app = notice.bundleID.value_or(unknown)}};
}

/// Whether the list has already shown this end. A notice that names neither process nor app counts as one
/// that it has shown.
bool ProcessRoll::isKnownEnd(const WorkspaceNotice& notice) const {
    return std::ranges::any_of(ended_, [&](const End& end) {
        return notice.pid ? end.pid == *notice.pid : !notice.bundleID || end.app == *notice.bundleID;
    });
}

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
        case screensDidSleep:
        case sessionResignedActive:
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
