#include "Velko/Flows/TrustWatch.h"

#include <utility>

#include "VelkoCore/Timing.h"
#include "VelkoEngine/AX.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

TrustWatch::TrustWatch(FlowHost& host, const Platform& platform, std::function<void(bool)> changed)
    : host_(host), platform_(platform), changed_(std::move(changed)) {}

void TrustWatch::start() {
    loop_ = platform_.mainThread.every(Timing::trustPollInterval, [this] { check(); });
}

bool TrustWatch::check() {
    const bool trusted = AX::isTrusted(platform_);
    if (trusted == host_.values().problems.trustMissing) {
        changed_(trusted);
    }
    return trusted;
}

}  // namespace velko
