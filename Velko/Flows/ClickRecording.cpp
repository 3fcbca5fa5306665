#include "Velko/Flows/ClickRecording.h"

#include <utility>

#include "Velko/Flows/TrustWatch.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

ClickRecording::ClickRecording(FlowHost& host, const Platform& platform, TrustWatch& trust, Handlers handlers)
    : host_(host),
      clock_(platform.mainThread),
      trust_(trust),
      begun_(std::move(handlers.begun)),
      recorded_(std::move(handlers.recorded)),
      history_(
          platform, std::move(handlers.bar), [this](const BundleID& bundleID) { record(bundleID); },
          std::move(handlers.pressed)) {}

void ClickRecording::listen() {
    if (history_.isRunning()) {
        return;
    }
    trust_.prove([this] {
        history_.start();
        if (history_.isRunning()) {
            begun_();
        }
    });
}

void ClickRecording::record(const BundleID& bundleID) {
    const Date now = floorToSeconds(clock_.date());
    host_.edit(Saving::soon, [&](Layout& layout) { layout.recordClick(bundleID, now, {}); });
    recorded_(bundleID);
}

}  // namespace velko
