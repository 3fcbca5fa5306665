#include "Velko/Flows/Presenting.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/Flows/PopOut.h"
#include "Velko/Flows/ShowApp.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoEngine/Background/Awaited.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

Presenting::Presenting(FlowHost& host, const Platform& platform, Surfaces& surfaces, Log& log,
                       Affected affected)
    : host_(host), platform_(platform), surfaces_(surfaces), log_(log), affected_(std::move(affected)) {}

std::optional<std::string> Presenting::start() {
    const AppValues& values = host_.values();
    if (values.isPresenting()) {
        return std::nullopt;
    }
    if (!values.layout.offersPresenting) {
        return "Presenting is switched off in Velko's settings.";
    }
    if (const Health health = values.health(); !health.isOk()) {
        return std::string(describe(health.kind));
    }
    affected_.popOut.endAll();
    affected_.showMe.forget();
    affected_.reveal(RevealEvent::shareStarted());
    startedAt_ = floorToSeconds(platform_.mainThread.date());
    startedUp_ = platform_.mainThread.now();
    waitForEnd();
    surfaces_.announce("Presenting. Only the icons that you chose show.");
    return std::nullopt;
}

void Presenting::stop() {
    if (host_.values().isPresenting()) {
        wait_.cancel();
        affected_.reveal(RevealEvent::shareStopped());
        surfaces_.announce("Presenting is over.");
    }
}

void Presenting::toggle() {
    if (host_.values().isPresenting()) {
        stop();
    } else if (const auto why = start()) {
        log_.log("reveal", "not presenting: " + *why);
        surfaces_.announce(*why);
    }
}

void Presenting::setStays(const BundleID& bundleID, bool stays) {
    host_.edit(Saving::now, [&](Layout& layout) {
        if (stays) {
            layout.shareKeep.insert(bundleID);
        } else {
            layout.shareKeep.erase(bundleID);
        }
    });
    log_.log("settings", "stays while presenting " + bundleID + " " + std::string(stays ? "true" : "false"));
    host_.apply({.reason = "stays while presenting"});
}

void Presenting::setMinutes(std::int64_t minutes) {
    const std::int64_t wanted = Layout::normalisedPresenting(minutes);
    host_.edit(Saving::now, [&](Layout& layout) { layout.presentingMinutes = wanted; });
    log_.log("settings",
             "presenting lasts " + (wanted == 0 ? "until it is ended" : std::to_string(wanted) + " minutes"));
    reconsider();
}

void Presenting::reconsider() {
    if (!host_.values().isPresenting()) {
        wait_.cancel();
    } else if (!host_.values().layout.offersPresenting) {
        stop();
    } else {
        waitForEnd();
    }
}

/// Time passes for the audience while the Mac sleeps, so the wall clock counts. It may be set back, but that
/// must not make it last longer.
void Presenting::waitForEnd() {
    wait_.cancel();
    const std::chrono::minutes lasts(host_.values().layout.presentingMinutes);
    if (lasts == std::chrono::minutes::zero()) {
        return;
    }
    const Uptime byClock = platform_.mainThread.date() - PreciseDate(startedAt_);
    const Uptime left = lasts - std::max(byClock, platform_.mainThread.now() - startedUp_);
    if (left <= Uptime::zero()) {
        log_.log("reveal", "the time for presenting is over");
        stop();
    } else {
        wait_ = Awaited::after(platform_, "the end of presenting", left, [this] { waitForEnd(); });
    }
}

}  // namespace velko
