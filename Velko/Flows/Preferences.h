#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Layout/Switches.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

class AutopilotOffers;
class LiveActivityWatch;
class Log;
class LoginItem;
class PopOut;

/// The user's switches. Each is saved at once, logged, and takes effect at once. What the organisation has
/// decided stays. Main thread; owned by the
/// controller.
class Preferences final : private NonCopyable {
 public:
    /// The flows that a switch may start or stop.
    struct Affected {
        PopOut& popOut;
        LiveActivityWatch& liveActivity;
        AutopilotOffers& autopilot;
        std::function<void()> presentingChanged;
        std::function<void()> revealChanged;
        std::function<void()> wideDisplaysChanged;
    };

    Preferences(FlowHost& host, Log& log, LoginItem& loginItem, Affected affected);

    void setNewIconDefault(Section section);
    void setSwitch(Switch which, bool on);
    /// Keeps an app out of suggestions for good, or lets it back in.
    void setAlwaysKeep(const BundleID& bundleID, bool keep);

    /// Whether an app may pop out when it changes. Switching it on also ends a quiet day.
    void setPopsOut(const BundleID& bundleID, bool popsOut);

    /// The seconds are brought to 0 or 3 to 30.
    void setReveal(RevealSettings reveal);

    /// Nothing is hidden while the broom is on a display of so many points or more; nothing: that is off.
    void setShowAllFromWidth(std::optional<std::int64_t> points);

    /// Not part of the layout: the system keeps it, and may refuse.
    void setLaunchAtLogin(bool on);

 private:
    /// Whether the organisation has decided this. Then the wish is logged, and nothing changes.
    [[nodiscard]] bool isRefused(bool isManaged, std::string_view what) const;

    FlowHost& host_;
    Log& log_;
    LoginItem& loginItem_;
    Affected affected_;
};

}  // namespace velko
