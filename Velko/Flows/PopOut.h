#pragma once

#include <map>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;

/// Lets a tucked app out on the bar for a while because its icon changed. Main thread; owned by the
/// controller.
class PopOut final : private NonCopyable {
 public:
    PopOut(FlowHost& host, const Platform& platform, Log& log);

    /// Lets the app out; one that is out stays for the full time from now.
    void begin(const BundleID& bundleID);

    /// The app has a new place: it is not out because of its change any more. Does not apply.
    void forget(const BundleID& bundleID);

    /// Tucks every app again, because the user does not want pop-outs any more. Does not apply.
    void endAll();

    /// Forgets the ends that are to come.
    void stop() noexcept { ends_.clear(); }

 private:
    void end(const BundleID& bundleID);

    FlowHost& host_;
    Platform platform_;
    Log& log_;
    std::map<BundleID, Task> ends_;
};

}  // namespace velko
