#include "Velko/Flows/ChangeWatch.h"

#include <utility>

#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

ChangeWatch::ChangeWatch(FlowHost& host, const Platform& platform,
                         std::function<void(const BundleID&)> changed)
    : host_(host), platform_(platform), changed_(std::move(changed)) {}

void ChangeWatch::start() {
    loop_ = platform_.mainThread.every(Timing::popOutPollInterval, [this] { look(); });
}

void ChangeWatch::stop() noexcept {
    loop_.cancel();
    reading_.cancel();
}

void ChangeWatch::look() {
    if (reading_.isPending()) {
        return;  // an app that hangs makes a look last longer than the time between two
    }
    auto apps = host_.values().problems.trustMissing ? std::map<BundleID, ProcessID>{} : watchedApps();
    if (apps.empty()) {
        compare({});  // what is seen next is a new beginning
        return;
    }
    reading_ = Inventory::readings(platform_, std::move(apps),
                                   [this](const Inventory::Readings& readings) { compare(readings); });
}

void ChangeWatch::compare(const Inventory::Readings& readings) {
    ChangeDetector::Look now{.apps = {}, .at = platform_.mainThread.now()};
    for (const auto& [bundleID, reading] : readings) {
        if (isWatched(bundleID)) {
            now.apps.emplace(bundleID, ChangeDetector::Seen{.pid = reading.pid, .items = reading.items});
        }
    }
    for (const BundleID& bundleID : detector_.check(std::move(now))) {
        changed_(bundleID);
    }
}

bool ChangeWatch::isWatched(const BundleID& bundleID) const {
    const Layout& layout = host_.values().layout;
    return layout.popOutOnChange && layout.section(bundleID) == Section::tucked &&
           !layout.isWaiting(bundleID);
}

std::map<BundleID, ProcessID> ChangeWatch::watchedApps() const {
    std::map<BundleID, ProcessID> apps;
    for (const MenuBarItem& item : host_.values().items) {
        if (isWatched(item.bundleID)) {
            apps.emplace(item.bundleID, item.pid);
        }
    }
    return apps;
}

}  // namespace velko
