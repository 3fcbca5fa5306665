#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "Velko/App/AppInfo.h"
#include "Velko/App/AppValues.h"
#include "Velko/App/ChangeNotices.h"
#include "Velko/Flows/AutoTuck.h"
#include "Velko/Flows/AutopilotOffers.h"
#include "Velko/Flows/ChangeWatch.h"
#include "Velko/Flows/FlowHost.h"
#include "Velko/Flows/InventoryScan.h"
#include "Velko/Flows/LayoutSaving.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/LiveActivityWatch.h"
#include "Velko/Flows/Newcomers.h"
#include "Velko/Flows/NoteDeferral.h"
#include "Velko/Flows/PeekOpening.h"
#include "Velko/Flows/PopOut.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/ShelfClosing.h"
#include "Velko/Flows/ShowMe.h"
#include "Velko/Flows/TrustWatch.h"
#include "Velko/Flows/UsageSampling.h"
#include "Velko/Ports/AppPorts.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Watching/ClickHistory.h"
#include "VelkoEngine/Watching/IconWatch.h"
#include "VelkoEngine/Watching/SystemEvents.h"

namespace velko {

class Log;

/// The one object that owns the program's live state and the engine. Whatever may change what is visible
/// ends in `apply`. What takes time of its own is a flow: a small class with the timers, which sees the
/// controller as a `FlowHost`. Main thread only.
class AppController final : private FlowHost {
 public:
    /// What a controller is made of. The references outlive it.
    struct Parts {
        Platform platform;
        AppPorts ports;
        Log& log;
        LayoutStore store;
        std::unique_ptr<MenuBarEngine> engine;
        AppInfo info;
    };

    explicit AppController(Parts parts);

    /// Loads the layout, finds out what the system allows and begins to tidy. Once, after launch.
    void start();
    /// Shows every icon again and writes what was still to be saved. Once, before the process ends.
    void quit();

    // What views show, and how they learn that it changed.

    [[nodiscard]] const AppValues& values() const noexcept override { return values_; }
    /// `handler` is called once per turn of the main thread in which a value changed.
    [[nodiscard]] Subscription observe(std::function<void()> handler);
    /// Where Velko's own icon stands, read anew where it answers; origin at the top left of the primary
    /// screen.
    std::function<std::optional<Rect>()> broomFrame;
    /// Called after every answer of the engine, skipped applies included, and after every accepted scan.
    std::function<void()> onChange;
    /// Called for every mouse button that goes down anywhere, while clicks can be listened for. It must
    /// return at once.
    std::function<void(const ClickTapEvent&)> onPress;
    [[nodiscard]] const BundleID& ownBundleID() const noexcept { return info_.bundleID; }
    [[nodiscard]] const AppInfo& info() const noexcept { return info_; }
    /// The file that holds the layout.
    [[nodiscard]] const std::filesystem::path& layoutFile() const noexcept { return store_.url(); }
    [[nodiscard]] const MenuBarEngine& engine() const noexcept { return *engine_; }

    // The user's doings.

    /// Before anything else that a click on the broom may mean: whether the click is used up, because it
    /// is the one that has just closed the shelf or because it ends a show-me.
    bool consumesClick();
    /// The broom was clicked or hovered over, with or without the request for buried icons.
    void toggle(bool withBuried = false);
    /// The pointer rests on the broom: a toggle, for which nobody has let go of the keyboard.
    void revealByPointer();
    /// Moves the reveal state as the event asks and applies the outcome.
    void handle(const RevealEvent& event);
    /// The user has dismissed the shelf; clicks beside it mean nothing while an app peeks.
    void closeShelf(ShelfClosing::By by);
    /// The user does something in the shelf, which goes by itself only a while after the last time.
    void shelfTouched() { autoTuck_.touched(); }
    /// Opens the menu of an app whose icon is hidden; counts as a click on its icon. Nothing happens while
    /// that app is being opened already.
    void open(const BundleID& bundleID);
    /// Puts an app into a section; for one that waits in the inbox, this is the answer.
    void place(const BundleID& bundleID, Section section);
    /// Puts every app of a finished sort into its section, all at once; the setup counts as done.
    void completeSetup(const std::map<BundleID, Section>& sections);
    /// Shows everything until something else is applied.
    void showAll();
    /// Asks the system once more for what it has refused.
    void tryAgain();
    /// Starts the diagnostic watch of all icons, or stops it.
    void toggleIconWatch();
    [[nodiscard]] bool isIconWatchRunning() const noexcept { return iconWatch_ && iconWatch_->isRunning(); }

    [[nodiscard]] Preferences& preferences() noexcept { return preferences_; }
    [[nodiscard]] AutopilotOffers& autopilot() noexcept { return autopilot_; }
    [[nodiscard]] NoteDeferral& note() noexcept { return note_; }
    [[nodiscard]] ShowMe& showMe() noexcept { return showMe_; }
    [[nodiscard]] LayoutTransfer& transfer() noexcept { return transfer_; }

    // The machinery below.

    /// Reads the layout file again. A file that cannot be read is left as it is, and everything is shown.
    void loadLayout();
    /// Writes the layout a while after the last of a burst of edits, or at once. Whether it was written.
    void scheduleSave() { saving_.schedule(); }
    bool saveNow();
    /// Starts reading the menu bar anew. Only the newest request's answer counts.
    void requestScan(InventoryScan::Depth depth) { scan_.request(depth); }
    /// The plan that follows from the present state.
    [[nodiscard]] VisibilityPlan currentPlan() const;
    /// Computes the plan and hands it to the engine: the single way by which visibility changes.
    void apply(ApplyRequest request) override;
    /// Uptime in seconds at which the applied plan last changed.
    [[nodiscard]] std::optional<Uptime> lastHidingChange() const noexcept override {
        return lastHidingChange_;
    }

 private:
    /// Ends the program when the caller is not on the main thread: what it is about to touch is not its own.
    void requireMainThread() const;

    // FlowHost
    bool edit(Saving saving, const Edit& change) override;
    [[nodiscard]] AppValues& writableValues() noexcept override { return values_; }
    void valueChanged() override { notices_.note(); }

    void startBackgroundLoops();
    void handleSystemEvent(const SystemEvents::Kind& event);
    void trustChanged(bool trusted);
    void watchClicks();
    [[nodiscard]] KnownBar knownBar() const;
    void recordClick(const BundleID& bundleID);
    void rescanIfQuiet();
    void accept(std::vector<MenuBarItem> items, InventoryScan::Depth depth);
    void layoutReplaced(const char* reason);
    void followSwitches();
    bool tidyAnyway(const RevealEvent& event);
    void setState(RevealState state);
    template <class Fact>
    void setHealth(Fact HealthFacts::* fact, std::type_identity_t<Fact> to) {
        HealthFacts problems = values_.problems;
        problems.*fact = std::move(to);
        set(&AppValues::problems, std::move(problems));
    }
    void applied(const ApplyRequest& request, const MenuBarEngine::Result& result);
    void planInForceChanged();
    void tellChange() const;
    void refreshTidiedCount();

    Platform platform_;
    AppPorts ports_;
    Log& log_;
    AppInfo info_;
    LayoutStore store_;
    AppValues values_;
    BundleIDs present_;  ///< the owners of `values_.items`
    std::optional<Uptime> lastHidingChange_;
    ChangeNotices notices_;

    // The flows come after the state that they read, and the engine before them: it is torn down last.
    std::unique_ptr<MenuBarEngine> engine_;
    LayoutSaving saving_;
    InventoryScan scan_;
    AutoTuck autoTuck_;
    ShelfClosing shelfClosing_;
    ShowMe showMe_;
    PeekOpening opening_;
    PopOut popOut_;
    LayoutTransfer transfer_;
    std::optional<ClickHistory> clickHistory_;
    std::optional<SystemEvents> systemEvents_;
    std::optional<IconWatch> iconWatch_;

    // The background loops
    TrustWatch trustWatch_;
    UsageSampling usageSampling_;
    AutopilotOffers autopilot_;
    ChangeWatch changeWatch_;
    LiveActivityWatch liveActivity_;

    NoteDeferral note_;
    Newcomers newcomers_;
    Preferences preferences_;
};

}  // namespace velko
