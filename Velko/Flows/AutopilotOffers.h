#pragma once

#include <functional>
#include <vector>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Habits/Autopilot.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;

/// Offers tidy suggestions, at most once a week, and does what the user answers. Main thread; owned by the
/// controller.
class AutopilotOffers final : private NonCopyable {
 public:
    /// `checked` is called after each hourly check and told whether it made an offer.
    AutopilotOffers(FlowHost& host, const Platform& platform, Log& log, std::function<void(bool)> checked);

    void start();
    void stop() noexcept { loop_.cancel(); }

    /// Sees to it that no clock that was ahead silences us until then. To be called when a layout was loaded
    /// and when the clock may have jumped; the hourly check does it too.
    void heedClock();

    /// Notes that clicks are watched from now on, unless they have been before.
    void clicksAreWatched();

    /// What the autopilot proposes for the apps in the menu bar now; nothing while it is switched off.
    [[nodiscard]] std::vector<TidySuggestion> suggestions() const;

    // The user's answers. Each leaves the app alone for a month, the last one for good.
    void accept(const TidySuggestion& suggestion);
    void dismiss(const BundleID& bundleID);
    void alwaysKeep(const BundleID& bundleID);

    /// Asks every process of the app to quit; it may say no.
    void askToQuit(const BundleID& bundleID);

    /// Ends the offer when nothing of it is left. To be called after whatever may settle a suggestion.
    void settle();

 private:
    void check();
    [[nodiscard]] Date now() const;

    FlowHost& host_;
    Platform platform_;
    Log& log_;
    std::function<void(bool)> checked_;
    Task loop_;
};

}  // namespace velko
