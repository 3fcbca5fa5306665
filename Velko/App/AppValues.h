#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Velko/App/Health.h"
#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Keys/HotKeySettings.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/ManagedLayout.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Layout/UndoHistory.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/MenuBar/MenuBarRoom.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// An app whose menu did not open when the user asked for it.
struct FailedOpening {
    BundleID bundleID;
    bool isRunning = true;  ///< it runs, but does not answer

    bool operator==(const FailedOpening&) const = default;
};

/// Everything about the running program that views show; they are told when any of it changes.
struct AppValues {
    Layout layout;          ///< as it holds: the user's own with what is managed laid over it
    ManagedLayout managed;  ///< what the user's organisation has decided for this Mac
    std::vector<std::string> managedFaults;  ///< what of its file makes no sense, or why all of it is ignored
    RevealState state;                       ///< starts collapsed and is never saved
    std::vector<MenuBarItem> items;          ///< as the last accepted scan found them
    HealthFacts problems;
    bool inventoryLoaded = false;                    ///< whether a scan has been accepted yet
    RevealStyle activeStyle = RevealStyle::inline_;  ///< of the display that holds the broom
    bool isOnWideDisplay = false;                    ///< the broom is where the user wants nothing hidden
    MenuBarRoom::Widths iconWidths;                  ///< of the icons present, as last read
    BundleIDs withoutPlace;  ///< apps that should show, but had no room when last looked
    std::map<BundleID, AppUsage> usage;
    bool revealedByPointer = false;  ///< by resting on the broom; whoever types goes on typing
    bool isShelfPinned = false;      ///< the shelf stays until the user closes it
    std::size_t tidiedCount = 0;     ///< apps present whose icons the plan in force hides
    BundleIDs poppedOut;             ///< tucked apps that are out for a while because they changed
    bool liveActivityShowing = false;
    bool liveActivityDismissed = false;          ///< the user tidies anyway while this activity lasts
    std::optional<BundleID> showingMe;           ///< the app whose icon the user looks for
    std::optional<FailedOpening> failedOpening;  ///< for a while, and until the next opening
    bool isRefused = false;                      ///< the system has refused to hide, and nothing worked since
    bool noteDeferred = false;                   ///< there is something to ask, and the user has put it off
    std::int64_t loginRevision = 0;              ///< grows when launch at login was switched
    std::optional<std::string> loginFailure;     ///< why the last switch of it failed
    std::optional<std::string> saveFailure;      ///< why the layout's file lacks the latest changes
    UndoHistory history;                         ///< what the user has changed in the layout
    std::optional<std::string> historyFailure;   ///< why the last change has no way back to what was before
    std::size_t historyRevision = 0;             ///< grows with each earlier layout that is kept
    std::map<HotKeyAction, std::string>
        keyFaults;  ///< why keys of the layout do nothing, in words for people

    [[nodiscard]] Health health() const { return problems.health(); }

    /// Whether the shelf is on display. While an app peeks on top of a revealed shelf, it stays.
    [[nodiscard]] bool isShelfShown() const noexcept {
        return activeStyle == RevealStyle::shelf && state.isRevealed();
    }

    /// Whether only what an audience may see shows.
    [[nodiscard]] bool isPresenting() const noexcept { return state.asShareSafe() != nullptr; }

    /// Whether nothing is hidden because of the display that the broom is on. Presenting counts for more, and
    /// so does looking for one icon.
    [[nodiscard]] bool hidesNothing() const noexcept {
        return isOnWideDisplay && !showingMe && !isPresenting();
    }

    /// Whether everything is out, whatever the user has brought out.
    [[nodiscard]] bool isEverythingOut() const noexcept { return stepsAside() || hidesNothing(); }

    /// Whether everything is out because of an iPhone Live Activity.
    [[nodiscard]] bool stepsAside() const noexcept {
        return liveActivityShowing && !liveActivityDismissed && !isPresenting();
    }
};

/// Tells observers that something has changed: once per turn of the main thread, however much it was, and
/// never within the change itself. Main thread.
class ChangeNotices final {
 public:
    explicit ChangeNotices(MainThread& mainThread) : mainThread_(mainThread) {}

    /// `handler` is called until the subscription ends. It may end subscriptions, change values and destroy
    /// this.
    [[nodiscard]] Subscription observe(std::function<void()> handler);

    /// Something has changed.
    void note();

 private:
    using Handlers = std::map<int, std::function<void()>>;

    void tell();

    MainThread& mainThread_;
    std::shared_ptr<Handlers> handlers_ = std::make_shared<Handlers>();
    int nextID_ = 0;
    Task pending_;
};

}  // namespace velko
