#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "Velko/App/AppInfo.h"
#include "Velko/App/AppValues.h"
#include "Velko/App/Visibility.h"
#include "Velko/Flows/FlowHost.h"
#include "Velko/Flows/LayoutKeeping.h"
#include "Velko/Flows/ManagedWatch.h"
#include "Velko/Ports/Desktop.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/Layout/ManagedLayoutFile.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

class AutopilotOffers;
class EarlierLayouts;
class GlobalKeys;
class LayoutTransfer;
class Log;
class NoteDeferral;
class Preferences;
class Presenting;
class ShowMe;
class SystemResponses;
struct ClickTapEvent;
struct Flows;

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
        ManagedLayoutFile managed{};
    };

    explicit AppController(Parts parts);
    ~AppController();

    /// Loads the layout, finds out what the system allows and begins to tidy. Once, after launch.
    void start();
    /// Ends all flows, shows every icon again and writes what was still to be saved. Once, before the process
    /// ends; from then on only the values may be asked for.
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
    /// Called when the user has pressed the key that opens the search.
    std::function<void()> onSearchKey;
    /// Called for every mouse button that goes down anywhere, while clicks can be listened for. It must
    /// return at once.
    std::function<void(const ClickTapEvent&)> onPress;
    [[nodiscard]] const BundleID& ownBundleID() const noexcept { return info_.bundleID; }
    [[nodiscard]] const AppInfo& info() const noexcept { return info_; }
    /// The file that holds the layout.
    [[nodiscard]] const std::filesystem::path& layoutFile() const noexcept { return store_.url(); }
    [[nodiscard]] const MenuBarEngine& engine() const noexcept { return *engine_; }

    // What the user does.

    /// Before anything else that a click on the broom may mean: whether the click is used up, because it
    /// is the one that has just closed the shelf or because it ends a show-me.
    bool consumesClick();
    /// The broom was clicked, with or without the request for buried icons, or left by a pointer that had
    /// revealed.
    void toggle(bool withBuried = false) { visibility_.toggle(withBuried); }
    /// The pointer rests on the broom. Whoever types goes on typing.
    void revealByPointer() { visibility_.revealByPointer(); }
    /// Moves the reveal state as the event asks and applies the outcome.
    void handle(const RevealEvent& event) { visibility_.handle(event); }
    /// The user has dismissed the shelf; clicks beside it mean nothing while an app peeks.
    void closeShelf(ShelfDismissal how) { visibility_.closeShelf(how); }
    /// Keeps the open shelf from closing by itself and for clicks elsewhere, or lets it.
    void pinShelf(bool isPinned) { visibility_.pinShelf(isPinned); }
    /// The user does something in the shelf, which goes by itself only a while after the last time.
    void shelfTouched();
    /// Opens the menu of an app, also if its icon is hidden; counts as a click on its icon. Nothing happens
    /// while that app is being opened already, or while presenting hides its icon. `pressed` is told what
    /// came of it, within half a second.
    void open(const BundleID& bundleID, std::function<void(ItemOpener::Press)> pressed = {});
    /// Puts an app into a section; for one that waits in the inbox, this is the answer.
    void place(const BundleID& bundleID, Section section) { place(BundleIDs{bundleID}, section); }
    /// Puts several apps there at once.
    void place(const BundleIDs& apps, Section section);
    /// Forgets all that the layout knows of these apps. One that is in the menu bar is left out.
    void forget(const BundleIDs& apps);
    /// Takes back the last placing, forgetting, import, sort or accepted suggestion (`values().history` says
    /// which), or does again what was taken back. Returns whether there was anything.
    bool undo();
    bool redo();
    /// Puts every app of a finished sort into its section, all at once; the setup counts as done.
    void completeSetup(const std::map<BundleID, Section>& sections);
    /// The user leaves the first setup for later: it does not open by itself any more.
    void putOffSetup();
    /// The broom may be on another display now, or the user may want something else there.
    void lookAtDisplay();
    /// Shows everything until something else is applied.
    void showAll() { visibility_.showAll(); }
    /// Asks the system once more for what it has refused.
    void tryAgain();
    /// Starts the diagnostic watch of all icons, or stops it.
    void toggleIconWatch();
    [[nodiscard]] bool isIconWatchRunning() const noexcept;

    [[nodiscard]] Preferences& preferences() noexcept;
    [[nodiscard]] AutopilotOffers& autopilot() noexcept;
    [[nodiscard]] NoteDeferral& note() noexcept;
    [[nodiscard]] ShowMe& showMe() noexcept;
    [[nodiscard]] LayoutTransfer& transfer() noexcept;
    [[nodiscard]] EarlierLayouts& earlierLayouts() noexcept;
    [[nodiscard]] GlobalKeys& keys() noexcept;
    [[nodiscard]] Presenting& presenting() noexcept;

    // The machinery below.

    /// Reads the layout file again. A file that cannot be read is left as it is, and everything is shown.
    void loadLayout();
    /// The layout as the user has decided it, without what is managed.
    [[nodiscard]] const Layout& ownLayout() const noexcept override { return keeping_.own(); }
    /// Writes the layout a while after the last of a burst of edits, or at once. Whether it was written.
    void scheduleSave() { keeping_.schedule(); }
    bool saveNow() { return keeping_.saveNow(); }
    /// Starts reading the menu bar anew. Only the newest request's answer counts.
    void requestScan(ScanDepth depth);
    /// The plan that follows from the present state.
    [[nodiscard]] VisibilityPlan currentPlan() const { return visibility_.currentPlan(); }
    /// Computes the plan and hands it to the engine.
    void apply(ApplyRequest request) override { visibility_.apply(std::move(request)); }
    /// When the applied plan last changed.
    [[nodiscard]] std::optional<Uptime> lastHidingChange() const noexcept override {
        return visibility_.lastHidingChange();
    }

 private:
    // FlowHost
    bool edit(Saving saving, const Edit& change) override { return keeping_.edit(saving, change); }
    bool edit(UndoHistory::Change undoable, const Edit& change) override;
    [[nodiscard]] AppValues& writableValues() noexcept override { return values_; }
    void valueChanged() override;

    [[nodiscard]] std::unique_ptr<Flows> makeFlows();
    void layoutLoaded(bool isMended);
    void managedChanged();
    void forgetHistory();
    void layoutReplaced(const char* reason);
    void followSwitches();
    void stateSet();
    void tellChange() const;
    void keyPressed(HotKeyAction action);

    Platform platform_;
    AppPorts ports_;
    Log& log_;
    AppInfo info_;
    LayoutStore store_;
    AppValues values_;
    std::optional<ChangeNotices> notices_;  ///< nobody is told anything after quitting
    std::unique_ptr<MenuBarEngine> engine_;
    LayoutKeeping keeping_;
    ManagedWatch managed_;
    Visibility visibility_;
    std::unique_ptr<Flows> flows_;  ///< null after quitting, as is the next
    std::unique_ptr<SystemResponses> responses_;
};

}  // namespace velko
