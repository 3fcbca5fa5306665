#include "Velko/Flows/PopOut.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/Flows/Beat.h"
#include "Velko/Flows/TrustWatch.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

namespace {

/// "10.0 seconds".
std::string inWords(Timing::Duration duration) {
    std::string text(32, '\0');
    const double seconds = std::chrono::duration<double>(duration).count();
    text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%.1f seconds", seconds)));
    return text;
}

}  // namespace

ChangeWatch::ChangeWatch(FlowHost& host, const Platform& platform, TrustWatch& trust,
                         std::function<void(const BundleID&)> changed)
    : host_(host), platform_(platform), trust_(trust), changed_(std::move(changed)) {}

void ChangeWatch::start(Beat& beat) {
    beat.add({.period = Timing::popOutPollInterval,
              .hasWork = [this] { return !host_.values().problems.trustMissing && isAnyWatched(); },
              .run = [this] { look(); },
              .rest = [this] { compare({}); }});  // what is seen next is a new beginning
}

void ChangeWatch::look() {
    // An app that hangs makes a look last longer than the time between two.
    if (reading_.isPending() || !trust_.check()) {
        return;
    }
    const Uptime now = platform_.mainThread.now();
    // An app that gains an icon says so to nobody.
    if (now - elementsSince_ >= Timing::newIconsInterval) {
        elements_.clear();
        elementsSince_ = now;
    }
    reading_ = Inventory::readings(platform_, watchedApps(),
                                   [this](Inventory::Readings readings) { accept(std::move(readings)); });
}

void ChangeWatch::accept(Inventory::Readings readings) {
    const auto answered = [](const auto& reading) { return !reading.second.items.empty(); };
    trust_.appsWereRead(std::ranges::any_of(readings, answered));
    compare(readings);
    elements_.clear();
    for (auto& [bundleID, reading] : readings) {
        elements_.emplace(reading.pid, std::move(reading.elements));
    }
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
    return layout.section(bundleID) == Section::tucked && !layout.isWaiting(bundleID) &&
           layout.mayPopOut(bundleID, floorToSeconds(platform_.mainThread.date()));
}

bool ChangeWatch::isAnyWatched() const {
    const AppValues& values = host_.values();
    return values.layout.popOutOnChange && !values.isPresenting() &&
           std::ranges::any_of(values.items,
                               [this](const MenuBarItem& item) { return isWatched(item.bundleID); });
}

std::map<BundleID, Inventory::Watched> ChangeWatch::watchedApps() const {
    std::map<BundleID, Inventory::Watched> apps;
    for (const MenuBarItem& item : host_.values().items) {
        if (isWatched(item.bundleID)) {
            const auto known = elements_.find(item.pid);
            apps.emplace(item.bundleID,
                         Inventory::Watched{.pid = item.pid,
                                            .elements = known == elements_.end() ? std::vector<AXElement>()
                                                                                 : known->second});
        }
    }
    return apps;
}

PopOut::PopOut(FlowHost& host, const Platform& platform, Log& log)
    : host_(host), platform_(platform), log_(log) {}

void PopOut::begin(const BundleID& bundleID) {
    log_.log("popout", bundleID + " changed: out for " + inWords(Timing::popOutDuration));
    BundleIDs out = host_.values().poppedOut;
    out.insert(bundleID);
    host_.set(&AppValues::poppedOut, out);
    host_.apply({.reason = "pop out " + bundleID});
    ends_.insert_or_assign(bundleID, Awaited::after(platform_, "a pop-out", Timing::popOutDuration,
                                                    [this, bundleID] { end(BundleID(bundleID)); }));
    if (limit_.isTooOften(bundleID, platform_.mainThread.now())) {
        quieten(bundleID);
    }
}

void PopOut::quieten(const BundleID& bundleID) {
    log_.log("popout", bundleID + " changes all the time: quiet until tomorrow");
    const Date now = floorToSeconds(platform_.mainThread.date());
    host_.edit(Saving::nowUnlessBroken, [&](Layout& layout) { layout.quieten(bundleID, now, {}); });
}

void PopOut::forget(const BundleID& bundleID) {
    ends_.erase(bundleID);
    BundleIDs out = host_.values().poppedOut;
    out.erase(bundleID);
    host_.set(&AppValues::poppedOut, std::move(out));
}

void PopOut::end(const BundleID& bundleID) {
    forget(bundleID);
    log_.log("popout", "pop out over " + bundleID);
    host_.apply({.reason = "pop out over " + bundleID});
}

void PopOut::endAll() {
    ends_.clear();
    host_.set(&AppValues::poppedOut, {});
}

}  // namespace velko
