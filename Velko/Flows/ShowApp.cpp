#include "Velko/Flows/ShowApp.h"

#include <string>
#include <utility>

#include "Velko/App/Log.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"

namespace velko {

PeekOpening::PeekOpening(FlowHost& host, const Platform& platform, Log& log,
                         std::function<void(const RevealEvent&)> handle)
    : host_(host), platform_(platform), log_(log), handle_(std::move(handle)), opener_(platform) {}

void PeekOpening::open(const BundleID& bundleID, std::function<void(ItemOpener::Press)> onPress) {
    host_.set(&AppValues::failedOpening, {});
    handle_(RevealEvent::peek(bundleID));
    if (!onPress) {
        onPress = [this, bundleID](ItemOpener::Press press) { pressed(bundleID, press); };
    }
    opener_.open({.bundleID = bundleID,
                  .log = [&log = log_](const std::string& line) { log.log("open", line); },
                  .onClose = [this] { handle_(RevealEvent::peekEnded()); },
                  .onPress = std::move(onPress)});
}

void PeekOpening::pressed(const BundleID& bundleID, ItemOpener::Press press) {
    if (press == ItemOpener::Press::menuOpens) {
        return;
    }
    host_.set(&AppValues::failedOpening,
              FailedOpening{.bundleID = bundleID, .isRunning = press != ItemOpener::Press::notRunning});
    failureShown_ = Awaited::after(platform_, "a line about an app", Timing::failedOpeningShown,
                                   [this] { host_.set(&AppValues::failedOpening, {}); });
}

ShowMe::ShowMe(FlowHost& host, const Platform& platform, Log& log)
    : host_(host), platform_(platform), log_(log) {}

void ShowMe::start(const BundleID& bundleID) {
    if (host_.values().isPresenting()) {
        log_.log("showme", "not while presenting: " + bundleID);
        return;
    }
    host_.set(&AppValues::showingMe, bundleID);
    log_.log("showme", "showing " + bundleID);
    host_.apply({.reason = "show me " + bundleID});
    wait_ =
        Awaited::after(platform_, "showing an icon", Timing::showMeDuration, [this] { end("show me done"); });
}

bool ShowMe::stop() {
    if (!host_.values().showingMe) {
        return false;
    }
    wait_.cancel();
    end("show me stopped");
    return true;
}

void ShowMe::forget() {
    wait_.cancel();
    host_.set(&AppValues::showingMe, {});
}

void ShowMe::end(const char* reason) {
    host_.set(&AppValues::showingMe, {});
    host_.apply({.reason = reason});
}

}  // namespace velko
