#include "Velko/Flows/ProcessWatch.h"

#include <map>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/Flows/Beat.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Processes.h"

namespace velko {

UsageSampling::UsageSampling(FlowHost& host, const Platform& platform, std::function<void()> afterEach)
    : host_(host), platform_(platform), afterEach_(std::move(afterEach)) {}

void UsageSampling::start(Beat& beat) {
    beat.add(
        {.period = Timing::healthSampleInterval,
         .early = Timing::popOutPollInterval,
         .hasWork = [this] { return !host_.values().items.empty() || !host_.values().problems.trustMissing; },
         .run =
             [this] {
                 sampleNow();
                 afterEach_();
             }});
}

void UsageSampling::sampleNow() {
    std::map<BundleID, UsageTracker::Reading> samples;
    for (const MenuBarItem& item : host_.values().items) {
        const auto [place, isFirst] =
            samples.try_emplace(item.bundleID, UsageTracker::Reading{.pid = item.pid, .sample = {}});
        if (!isFirst) {
            continue;
        }
        if (const auto sample = ProcessStats::sample(platform_, item.pid)) {
            place->second.sample = *sample;
        } else {
            samples.erase(place);
        }
    }
    tracker_.record({.samples = samples, .at = platform_.mainThread.now()});
    if (tracker_.usage() != host_.values().usage) {  // which costs less than a copy
        host_.set(&AppValues::usage, tracker_.usage());
    }
}

LiveActivityWatch::LiveActivityWatch(FlowHost& host, const Platform& platform, Log& log)
    : host_(host), platform_(platform), log_(log) {}

void LiveActivityWatch::start(Beat& beat) {
    const auto look = [this](bool found, Uptime late) {
        return Beat::Loop{.period = Timing::liveActivityCheckInterval,
                          .early = Timing::popOutPollInterval,
                          .late = late,
                          .hasWork =
                              [this, found] {
                                  return host_.values().layout.showLiveActivities &&
                                         pid_.has_value() == found;
                              },
                          .run = [this] { this->look(); }};
    };
    beat.add(look(true, {}));
    // Nobody tells when the process comes. Looking for it alone is not worth a wake-up.
    beat.add(look(false, Timing::healthSampleInterval - Timing::liveActivityCheckInterval));
}

void LiveActivityWatch::look() {
    conclude(isShowing(platform_.mainThread.now()));
}

void LiveActivityWatch::settingChanged() {
    conclude(detector_.isShowing(platform_.mainThread.now()));
}

bool LiveActivityWatch::isShowing(Uptime at) {
    if (!pid_ || !platform_.processes.exists(*pid_)) {
        pid_ = AX::liveActivityHelperPID(platform_);
    }
    if (!pid_) {
        return detector_.record({.pid = std::nullopt, .at = at});
    }
    const auto sample = ProcessStats::sample(platform_, *pid_);
    if (!sample) {
        return detector_.isShowing(at);
    }
    return detector_.record({.pid = pid_,
                             .cpuNanoseconds = sample->cpuNanoseconds,
                             .at = at,
                             .lastOwnChange = host_.lastHidingChange()});
}

void LiveActivityWatch::conclude(bool isShowing) {
    const bool showing = isShowing && host_.values().layout.showLiveActivities;
    if (showing == host_.values().liveActivityShowing) {
        return;
    }
    if (!showing) {
        host_.set(&AppValues::liveActivityDismissed, false);
    }
    host_.set(&AppValues::liveActivityShowing, showing);
    log_.log("liveactivity", showing ? "iPhone Live Activity running: showing the whole bar"
                                     : "Live Activity over: tidying again");
    host_.apply({.reason = showing ? "live activity" : "live activity over"});
}

}  // namespace velko
