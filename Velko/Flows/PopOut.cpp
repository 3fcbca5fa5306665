#include "Velko/Flows/PopOut.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <utility>

#include "Velko/App/Log.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"

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
