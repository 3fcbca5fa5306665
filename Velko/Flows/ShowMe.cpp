#include "Velko/Flows/ShowMe.h"

#include "Velko/Log.h"
#include "VelkoCore/Timing.h"

namespace velko {

ShowMe::ShowMe(FlowHost& host, MainThread& mainThread, Log& log)
    : host_(host), mainThread_(mainThread), log_(log) {}

void ShowMe::start(const BundleID& bundleID) {
    host_.set(&AppValues::showingMe, bundleID);
    log_.log("showme", "showing " + bundleID);
    host_.apply({.reason = "show me " + bundleID});
    wait_ = mainThread_.after(Timing::showMeDuration, [this] { end("show me done"); });
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
