#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "Velko/Flows/FlowHost.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;
class PopOut;
class ShowMe;

/// Shows an audience only the icons that the user has chosen for that, until the user ends it or its time is
/// over. Nothing asks, pops out or comes out meanwhile. It ends with the program: the next one starts without
/// it. Main thread; owned by the controller.
class Presenting final : private NonCopyable {
 public:
    /// What it ends, or moves.
    struct Affected {
        ShowMe& showMe;
        PopOut& popOut;
        std::function<void(const RevealEvent&)> reveal;
    };

    Presenting(FlowHost& host, const Platform& platform, Surfaces& surfaces, Log& log, Affected affected);

    /// Begins, unless it goes on already. Nothing, or why it can't in words for people.
    std::optional<std::string> start();
    void stop();
    /// Ends it or begins. Why it can't is said aloud.
    void toggle();

    // The user's choices. Each is saved at once, logged, and takes effect at once.

    /// Whether the app's icons stay in the bar.
    void setStays(const BundleID& bundleID, bool stays);
    /// How long it lasts from its beginning, in minutes from 1 to `Layout::longestPresenting`; 0: until the
    /// user ends it.
    void setMinutes(std::int64_t minutes);

    /// Ends it if the user does not want to be offered it any more, or if its time has passed while the Mac
    /// slept. To be called whenever one of these may be so.
    void reconsider();

 private:
    void waitForEnd();

    FlowHost& host_;
    Platform platform_;
    Surfaces& surfaces_;
    Log& log_;
    Affected affected_;
    Date startedAt_{};
    Uptime startedUp_{};
    Task wait_;
};

}  // namespace velko
