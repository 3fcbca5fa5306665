#include "Velko/Flows/AutoTuck.h"

#include <utility>

#include "VelkoCore/Timing.h"
#include "VelkoEngine/Awaited.h"
#include "VelkoEngine/OpenMenus.h"

namespace velko {

AutoTuck::AutoTuck(const Platform& platform, std::function<void()> tuck)
    : platform_(platform), tuck_(std::move(tuck)) {}

void AutoTuck::rearm(const RevealState& state, std::chrono::seconds delay) {
    wait_.cancel();
    const bool tucksItself = state == RevealState::revealed() || state == RevealState::revealedWithBuried();
    if (tucksItself && delay > std::chrono::seconds::zero()) {
        wait_ = Awaited::after(platform_, "tucking", delay, [this] { tuckOrWait(); });
    }
}

void AutoTuck::tuckOrWait() {
    if (isAnyMenuOpen(platform_)) {
        wait_ = Awaited::after(platform_, "tucking", Timing::autoTuckRetry, [this] { tuckOrWait(); });
    } else {
        tuck_();
    }
}

}  // namespace velko
