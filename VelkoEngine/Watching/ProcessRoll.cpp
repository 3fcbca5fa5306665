#include "VelkoEngine/Watching/ProcessRoll.h"

#include <algorithm>
#include <utility>

#include "VelkoEngine/MenuBar/Inventory.h"

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

/// Whether the list has told of that end. A notice that says little is taken to be about what it told.
bool ProcessRoll::isKnownEnd(const WorkspaceNotice& notice) const {
    return std::ranges::any_of(ended_, [&](const End& end) {
        return notice.pid ? end.pid == *notice.pid : !notice.bundleID || end.app == *notice.bundleID;
    });
}

}  // namespace velko
