#pragma once

#include <deque>
#include <map>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

/// Notices apps that pop out all the time although nobody wants to see what they show. A value.
class PopOutLimit {
 public:
    /// The app has popped out. Returns whether that was too often: `Timing::popOutMostInWindow` times within
    /// `Timing::popOutWindow`, and no click in between. The count then begins anew.
    [[nodiscard]] bool isTooOften(const BundleID& bundleID, Uptime at);

    /// The user has clicked the app's icon. What it showed before was welcome.
    void clicked(const BundleID& bundleID);

 private:
    std::map<BundleID, std::deque<Uptime>> popped_;
};

}  // namespace velko
