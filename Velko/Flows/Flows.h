#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Velko/Flows/AutoTuck.h"
#include "Velko/Flows/Beat.h"
#include "Velko/Flows/ClickRecording.h"
#include "Velko/Flows/EarlierLayouts.h"
#include "Velko/Flows/FlowHost.h"
#include "Velko/Flows/FrontMenus.h"
#include "Velko/Flows/GlobalKeys.h"
#include "Velko/Flows/InventoryScan.h"
#include "Velko/Flows/LayoutChanges.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/PopOut.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Presenting.h"
#include "Velko/Flows/ProcessWatch.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "Velko/Flows/TrustWatch.h"
#include "Velko/Ports/Desktop.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Watching/IconWatch.h"
#include "VelkoEngine/Watching/SystemEvents.h"

namespace velko {

class Log;

/// Everything in Velko that takes time of its own. The flows are made in the order below and end in the
/// reverse one, when this is destroyed; from then on nothing of theirs happens any more. Main thread; owned
/// by the controller.
struct Flows final : private NonCopyable {
    /// What the flows tell the controller.
    struct Handlers {
        std::function<void(const RevealEvent&)> reveal;  ///< the state is to move so
        std::function<void()> revealSettingsChanged;
        std::function<void()> wideDisplaysChanged;
        std::function<void(std::vector<MenuBarItem>, ScanDepth)> scanned;
        std::function<void(bool trusted)> trustChanged;
        std::function<void()> usageSampled;
        std::function<void(const char* reason)> layoutReplaced;
        std::function<void(HotKeyAction)> keyPressed;
        ClickRecording::Handlers clicks;
    };

    /// `host` and what the ports refer to outlive this.
    Flows(FlowHost& host, const Platform& platform, const AppPorts& ports, const LayoutHistory& history,
          Log& log, Handlers handlers);

    /// Begins the loops in the background.
    void startBackgroundLoops();

    TrustWatch trust;
    InventoryScan scan;
    AutoTuck autoTuck;
    ShowMe showMe;
    PeekOpening opening;
    PopOut popOut;
    ChangeWatch changes;
    LiveActivityWatch liveActivity;
    UsageSampling usage;
    AutopilotOffers autopilot;
    NoteDeferral note;
    Newcomers newcomers;
    LayoutChanges layoutChanges;
    LayoutTransfer transfer;
    EarlierLayouts earlier;
    Presenting presenting;
    Preferences preferences;
    ClickRecording clicks;
    GlobalKeys keys;
    FrontMenus frontMenus;
    Beat beat;                                 ///< of the loops in the background
    Subscription valuesChanged;                ///< tells the beat
    std::optional<SystemEvents> systemEvents;  ///< from the start on
    std::optional<IconWatch> iconWatch;        ///< once somebody has asked for it
};

}  // namespace velko
