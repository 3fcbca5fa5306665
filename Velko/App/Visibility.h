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
    /// Tells that the menu bar may look different.
    void tellChange() const { parts_.answered(); }
    /// Takes the style of the display that the broom stands on.
    void chooseStyle();

    /// The plan that follows from the present state.
    [[nodiscard]] VisibilityPlan currentPlan() const;
    /// Computes the plan and hands it to the engine: the single way by which visibility changes.
    void apply(ApplyRequest request);
    /// Shows everything until something else is applied.
    void showAll();
    /// When the applied plan last changed.
    [[nodiscard]] std::optional<Uptime> lastHidingChange() const noexcept { return lastHidingChange_; }

 private:
    bool tidyAnyway(const RevealEvent& event);
    void applied(const ApplyRequest& request, const MenuBarEngine::Result& result);
    void planInForceChanged();
    void countTidied();

    FlowHost& host_;
    Parts parts_;
    BundleIDs present_;
    std::optional<Uptime> lastHidingChange_;
    std::optional<MainThread::Uptime> shelfClosedByClickAt_;
};

}  // namespace velko
