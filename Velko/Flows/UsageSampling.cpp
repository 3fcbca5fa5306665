#include "Velko/Flows/UsageSampling.h"

#include <map>
#include <utility>

#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Processes.h"

namespace velko {

UsageSampling::UsageSampling(FlowHost& host, const Platform& platform, std::function<void()> afterEach)
    : host_(host), platform_(platform), afterEach_(std::move(afterEach)) {}

void UsageSampling::start() {
    loop_ = platform_.mainThread.every(Timing::healthSampleInterval, [this] {
        sampleNow();
        afterEach_();
    });
}

void UsageSampling::sampleNow() {
    std::map<BundleID, UsageTracker::Reading> samples;
    for (const MenuBarItem& item : host_.values().items) {
        if (samples.contains(item.bundleID)) {
            continue;
        }
        if (const auto sample = ProcessStats::sample(platform_, item.pid)) {
            samples.emplace(item.bundleID, UsageTracker::Reading{.pid = item.pid, .sample = *sample});
        }
    }
    tracker_.record({.samples = samples, .at = platform_.mainThread.now()});
    host_.set(&AppValues::usage, tracker_.usage());
}

}  // namespace velko
