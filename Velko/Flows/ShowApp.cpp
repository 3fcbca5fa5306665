#include "Velko/Flows/ShowApp.h"

#include <string>
#include <utility>

#include "Velko/App/Log.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"

namespace velko {

PeekOpening::PeekOpening(const Platform& platform, Log& log, std::function<void(const RevealEvent&)> handle)
    : log_(log), handle_(std::move(handle)), opener_(platform) {}

void PeekOpening::open(const BundleID& bundleID, std::function<void(ItemOpener::Press)> onPress) {
    handle_(RevealEvent::peek(bundleID));
    opener_.open({.bundleID = bundleID,
                  .log = [&log = log_](const std::string& line) { log.log("open", line); },
                  .onClose = [this] { handle_(RevealEvent::peekEnded()); },
                  .onPress = std::move(onPress)});
}

ShowMe::ShowMe(FlowHost& host, const Platform& platform, Log& log)
    : host_(host), platform_(platform), log_(log) {}

void ShowMe::start(const BundleID& bundleID) {
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

void ShowMe::end(const char* reason) {
    host_.set(&AppValues::showingMe, {});
    host_.apply({.reason = reason});
}

}  // namespace velko
