#pragma once

#include <functional>
#include <optional>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

class Log;

/// How the user dismisses the shelf.
enum class ShelfDismissal { click, escape };

/// What the user sees of the menu bar: how a reveal event moves the state, and how the state becomes the
/// system's. Main thread; owned by the controller.
class Visibility final : private NonCopyable {
 public:
    struct Parts {
        Platform platform;
        Log& log;
        MenuBarEngine& engine;  ///< outlives this
        BundleID ownBundleID;
        /// Where the broom stands, origin at the top left of the primary screen; nothing while nobody knows.
        std::function<std::optional<Rect>()> broomFrame;
        /// Where the front app's menus end, as x on the screen; nothing while nobody knows.
        std::function<std::optional<double>()> menusEnd;
        std::function<void()> stateSet;  ///< called whenever the state is set, even to what it was
        std::function<void()> answered;  ///< called after every answer of the engine, and after `showAll`
    };

    Visibility(FlowHost& host, Parts parts);

    /// Moves the reveal state as the event asks and applies the outcome.
    void handle(const RevealEvent& event);
    /// The broom was clicked, with or without the request for buried icons, or left by a pointer that had
    /// revealed. Nothing happens for the click that has just closed the shelf.
    void toggle(bool withBuried = false);
    /// The pointer rests on the broom. Whoever types goes on typing.
    void revealByPointer();
    /// The user has dismissed the shelf. A click beside it means nothing while an app peeks, and while the
    /// shelf is pinned.
    void closeShelf(ShelfDismissal how);
    /// Keeps the open shelf until the broom or Escape closes it, or no longer does.
    void pinShelf(bool isPinned);
    /// Whether a click on the broom now is the one that has just closed the shelf. Asking forgets it.
    [[nodiscard]] bool isClickThatClosedShelf();
    /// Sets the state without applying it.
    void setState(RevealState state);

    /// The apps that own icons, as the last accepted scan found them. Does not apply.
    void setPresent(BundleIDs present);
    [[nodiscard]] const BundleIDs& present() const noexcept { return present_; }
    [[nodiscard]] const BundleID& ownBundleID() const noexcept { return parts_.ownBundleID; }
    /// Notes which apps should show and have no place in the bar, as the scan of this moment has found them.
    void lookForPlaces();
    /// Tells that the menu bar may look different.
    void tellChange() const { parts_.answered(); }
    /// Takes the style of the display that the broom stands on.
    void chooseStyle() { chooseStyle(parts_.broomFrame()); }
    /// Finds out whether the broom is on a display on which nothing is to be hidden, and logs a change.
    /// Whether there is one: `apply` has to follow.
    bool lookAtDisplay();

    /// The plan that follows from the present state.
    [[nodiscard]] VisibilityPlan currentPlan() const;
    /// Computes the plan and hands it to the engine: the single way by which visibility changes.
    void apply(ApplyRequest request);
    /// Shows everything until something else is applied.
    void showAll();
    /// When the applied plan last changed.
    [[nodiscard]] std::optional<Uptime> lastHidingChange() const noexcept { return lastHidingChange_; }

 private:
    void chooseStyle(const std::optional<Rect>& broom);
    void useShelfIfFull(const RevealState& next, const std::optional<Rect>& broom);
    /// The plan for a state, while nothing else decides.
    [[nodiscard]] VisibilityPlan planFor(const RevealState& state) const;
    bool tidyAnyway(const RevealEvent& event);
    [[nodiscard]] bool isInVain(const RevealEvent& event) const;
    void applied(const ApplyRequest& request, const MenuBarEngine::Result& result);
    void planInForceChanged();
    void countTidied();

    FlowHost& host_;
    Parts parts_;
    BundleIDs present_;
    std::optional<bool> wasWide_;  ///< the display that the broom was on; nothing before the first look
    std::optional<Uptime> lastHidingChange_;
    std::optional<Uptime> iconsMovedAt_;  ///< when another plan was last sent
    std::optional<MainThread::Uptime> shelfClosedByClickAt_;
};

}  // namespace velko
