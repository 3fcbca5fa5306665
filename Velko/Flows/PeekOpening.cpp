#include "Velko/Flows/PeekOpening.h"

#include <string>
#include <utility>

#include "Velko/App/Log.h"

namespace velko {

PeekOpening::PeekOpening(const Platform& platform, Log& log, std::function<void(const RevealEvent&)> handle)
    : log_(log), handle_(std::move(handle)), opener_(platform) {}

void PeekOpening::open(const BundleID& bundleID) {
    handle_(RevealEvent::peek(bundleID));
    opener_.open({.bundleID = bundleID,
                  .log = [&log = log_](const std::string& line) { log.log("open", line); },
                  .onClose = [this] { handle_(RevealEvent::peekEnded()); }});
}

}  // namespace velko
