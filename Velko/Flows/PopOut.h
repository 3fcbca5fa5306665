#pragma once

#include <functional>
#include <map>
#include <vector>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Watching/ChangeDetector.h"
#include "VelkoCore/Watching/PopOutLimit.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Beat;
class Log;
class TrustWatch;

/// Looks at the tucked icons every two seconds and notices which show something new. Main thread; owned by
/// the controller.
class ChangeWatch final : private NonCopyable {
 public:
    /// `changed` is called for each app that has changed and may pop out.
    ChangeWatch(FlowHost& host, const Platform& platform, TrustWatch& trust,
                std::function<void(const BundleID&)> changed);

    /// Adds its looks to the beat.
    void start(Beat& beat);

 private:
    void look();
    void accept(Inventory::Readings readings);
    void compare(const Inventory::Readings& readings);
    [[nodiscard]] bool isWatched(const BundleID& bundleID) const;
    [[nodiscard]] bool isAnyWatched() const;
    [[nodiscard]] std::map<BundleID, Inventory::Watched> watchedApps() const;

    FlowHost& host_;
    Platform platform_;
    TrustWatch& trust_;
    std::function<void(const BundleID&)> changed_;
    ChangeDetector detector_;
    std::map<ProcessID, std::vector<AXElement>> elements_;  ///< of the last readings
    Uptime elementsSince_{};
    Task reading_;
};

/// Lets a tucked app out on the bar for a while because its icon changed. Main thread; owned by the
/// controller.
class PopOut final : private NonCopyable {
 public:
    PopOut(FlowHost& host, const Platform& platform, Log& log);

    /// Lets the app out; one that is out stays for the full time from now. One that does this all the time
    /// without being clicked is quiet for the rest of the day.
    void begin(const BundleID& bundleID);

    /// The user has clicked the app's icon.
    void clicked(const BundleID& bundleID) { limit_.clicked(bundleID); }

    /// The app has a new place: it is not out because of its change any more. Does not apply.
    void forget(const BundleID& bundleID);

    /// Tucks every app again, because the user does not want pop-outs any more. Does not apply.
    void endAll();

 private:
    void end(const BundleID& bundleID);
    void quieten(const BundleID& bundleID);

    FlowHost& host_;
    Platform platform_;
    Log& log_;
    PopOutLimit limit_;
    std::map<BundleID, Task> ends_;
};

}  // namespace velko
