#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Velko/App/Health.h"
#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoEngine/MenuBar/Inventory.h"

namespace velko {

/// Everything about the running program that views show; they are told when any of it changes.
struct AppValues {
    Layout layout;
    RevealState state;               ///< starts collapsed and is never saved
    std::vector<MenuBarItem> items;  ///< as the last accepted scan found them
    HealthFacts problems;
    bool inventoryLoaded = false;                    ///< whether a scan has been accepted yet
    RevealStyle activeStyle = RevealStyle::inline_;  ///< of the display that holds the broom
    std::map<BundleID, AppUsage> usage;
    bool revealedByPointer = false;  ///< by resting on the broom; whoever types goes on typing
    std::size_t tidiedCount = 0;     ///< apps present whose icons the plan in force hides
    BundleIDs poppedOut;             ///< tucked apps that are out for a while because they changed
    bool liveActivityShowing = false;
    bool liveActivityDismissed = false;       ///< the user tidies anyway while this activity lasts
    std::optional<BundleID> showingMe;        ///< the app whose icon the user looks for
    bool isRefused = false;                   ///< the system has refused to hide, and nothing worked since
    bool noteDeferred = false;                ///< there is something to ask, and the user has put it off
    std::int64_t loginRevision = 0;           ///< grows when launch at login was switched
    std::optional<std::string> loginFailure;  ///< why the last switch of it failed
    std::optional<std::string> saveFailure;   ///< why the layout's file lacks the latest changes

    [[nodiscard]] Health health() const { return problems.health(); }

    /// Whether the shelf is on display. While an app peeks on top of a revealed shelf, it stays.
    [[nodiscard]] bool isShelfShown() const noexcept {
        return activeStyle == RevealStyle::shelf && state.isRevealed();
    }

    /// Whether everything is out because of an iPhone Live Activity.
    [[nodiscard]] bool stepsAside() const noexcept { return liveActivityShowing && !liveActivityDismissed; }
};

}  // namespace velko
