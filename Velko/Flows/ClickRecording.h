#pragma once

#include <functional>
#include <optional>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Watching/ClickHistory.h"

namespace velko {

class TrustWatch;

/// Notes in the layout which icons are clicked on, and when. Main thread; owned by the controller.
class ClickRecording final : private NonCopyable {
 public:
    struct Handlers {
        /// The menu bar as it is known, asked for amid a click; returns at once.
        std::function<KnownBar()> bar;
        /// A mouse button has gone down anywhere; returns at once.
        std::function<void(const ClickTapEvent&)> pressed;
        /// Clicks are heard from now on.
        std::function<void()> begun;
        /// An app's icon was clicked. The layout knows it already.
        std::function<void(const BundleID&)> recorded{};
    };

    /// References outlive this.
    ClickRecording(FlowHost& host, const Platform& platform, TrustWatch& trust, Handlers handlers);

    /// Listens for clicks, if nobody does. The system is only asked once the permission is certain: without
    /// it, it asks the user for another one.
    void listen();
    /// Listens no more.
    void stop() { history_.stop(); }
    [[nodiscard]] bool isListening() const { return history_.isRunning(); }

    /// Counts a click on an app's icon now.
    void record(const BundleID& bundleID);

 private:
    FlowHost& host_;
    const MainThread& clock_;
    TrustWatch& trust_;
    std::function<void()> begun_;
    std::function<void(const BundleID&)> recorded_;
    ClickHistory history_;
};

}  // namespace velko
