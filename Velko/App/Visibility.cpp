#include "Velko/App/Visibility.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/BroomDisplay.h"
#include "Velko/App/Log.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/MenuBar/MenuBarRoom.h"

namespace velko {

namespace {

constexpr std::chrono::seconds settling{1};  ///< until icons have moved to where they stay

/// Whether more icons are out in the second state than in the first.
bool bringsOutMore(const RevealState& before, const RevealState& next) {
    const auto withBuried = RevealState::revealedWithBuried();
    return next.isRevealed() && (!before.isRevealed() || (next == withBuried && before != withBuried));
}

std::string wholePoints(double points) {
    return std::to_string(std::lround(points));
}

/// To the nearest millisecond, a half upwards.
std::string roundedMilliseconds(Uptime time) {
    return std::to_string((time + std::chrono::microseconds(500)) / std::chrono::milliseconds(1));
}

}  // namespace

Visibility::Visibility(FlowHost& host, Parts parts) : host_(host), parts_(std::move(parts)) {}

// Revealing

void Visibility::handle(const RevealEvent& event) {
    requireMainThread(parts_.platform.mainThread);
    if (isInVain(event) || tidyAnyway(event)) {
        return;
    }
    const RevealState before = host_.values().state;
    RevealState next = RevealMachine::next(before, event);
    if (bringsOutMore(before, next)) {
        const auto broom = parts_.broomFrame();
        if (!before.isRevealed()) {
            chooseStyle(broom);
        }
        useShelfIfFull(next, broom);
    }
    const std::string reason = describe(event);
    if (next != before) {
        parts_.log.log("reveal", reason + ": " + describe(before) + " -> " + describe(next));
    }
    setState(std::move(next));
    apply({.reason = reason});
}

/// While everything is out for a Live Activity, a click on the broom asks for the tidy bar.
bool Visibility::tidyAnyway(const RevealEvent& event) {
    const bool isClick =
        event.kind == RevealEvent::Kind::toggle || event.kind == RevealEvent::Kind::toggleWithBuried;
    if (!isClick || !host_.values().stepsAside()) {
        return false;
    }
    setState(RevealState::collapsed());
    host_.set(&AppValues::liveActivityDismissed, true);
    parts_.log.log("liveactivity", "broom clicked: tidying anyway until this activity ends");
    apply({.reason = "live activity dismissed"});
    return true;
}

/// Where nothing is hidden, there is nothing to bring out.
bool Visibility::isInVain(const RevealEvent& event) const {
    const AppValues& values = host_.values();
    return values.hidesNothing() && values.health().isOk() && values.state.asPeeking() == nullptr &&
           bringsOutMore(values.state, RevealMachine::next(values.state, event));
}

void Visibility::toggle(bool withBuried) {
    if (!isClickThatClosedShelf()) {
        handle(withBuried ? RevealEvent::toggleWithBuried() : RevealEvent::toggle());
    }
}

void Visibility::revealByPointer() {
    host_.set(&AppValues::revealedByPointer, true);
    toggle();
    host_.set(&AppValues::revealedByPointer, host_.values().state.isRevealed());
}

void Visibility::closeShelf(ShelfDismissal how) {
    const AppValues& values = host_.values();
    if (values.state.asPeeking() != nullptr || (values.isShelfPinned && how == ShelfDismissal::click)) {
        return;
    }
    if (how == ShelfDismissal::click) {
        shelfClosedByClickAt_ = parts_.platform.mainThread.now();
    }
    handle(RevealEvent::autoTuck());
}

void Visibility::pinShelf(bool isPinned) {
    if (host_.set(&AppValues::isShelfPinned, isPinned && host_.values().isShelfShown())) {
        parts_.log.log("reveal", isPinned ? "shelf pinned" : "shelf let go");
        parts_.stateSet();
    }
}

bool Visibility::isClickThatClosedShelf() {
    const auto closedAt = std::exchange(shelfClosedByClickAt_, std::nullopt);
    return closedAt && parts_.platform.mainThread.now() - *closedAt < Timing::shelfCloseClickGrace;
}

void Visibility::setState(RevealState state) {
    host_.set(&AppValues::state, std::move(state));
    const AppValues& values = host_.values();
    host_.set(&AppValues::revealedByPointer, values.revealedByPointer && values.state.isRevealed());
    host_.set(&AppValues::isShelfPinned, values.isShelfPinned && values.state.isRevealed());
    parts_.stateSet();
}

void Visibility::chooseStyle(const std::optional<Rect>& broom) {
    host_.set(
        &AppValues::activeStyle,
        host_.values().isOnWideDisplay  // where the icons are in the bar anyway
            ? RevealStyle::inline_
            : BroomDisplay::style(broom, parts_.platform.displays.displays(), host_.values().layout.reveal));
}

/// Brings icons out on the shelf this time, if they certainly have no room in the bar.
void Visibility::useShelfIfFull(const RevealState& next, const std::optional<Rect>& broom) {
    const AppValues& values = host_.values();
    const bool isElsewise = !values.health().isOk() || values.showingMe || values.stepsAside() ||
                            values.hidesNothing() || next.asPeeking() != nullptr;
    if (!values.layout.shelfWhenFull || values.activeStyle == RevealStyle::shelf || isElsewise) {
        return;
    }
    const std::vector<Display> displays = parts_.platform.displays.displays();
    const Display* const display = BroomDisplay::of(broom, displays);
    if (display == nullptr) {
        return;
    }
    const MenuBarRoom::Bar bar{.displays = displays,
                               .display = *display,
                               .items = values.items,
                               .widths = values.iconWidths,
                               .broom = broom,
                               .menusEnd = parts_.menusEnd()};
    const auto before = MenuBarRoom::need(bar, planFor(RevealState::collapsed()));
    const auto after = MenuBarRoom::need(bar, planFor(next));
    // The shelf helps only those that it would hold.
    if (after.fits() || after.needed <= before.needed) {
        return;
    }
    parts_.log.log("reveal", "the bar has room for " + wholePoints(after.room) + " points, and not for " +
                                 wholePoints(after.needed) + ": out on the shelf");
    host_.set(&AppValues::activeStyle, RevealStyle::shelf);
}

bool Visibility::lookAtDisplay() {
    const Layout& layout = host_.values().layout;
    const bool isWide =
        layout.showAllFromWidth &&
        BroomDisplay::isWide(parts_.broomFrame(), parts_.platform.displays.displays(), layout, wasWide_);
    wasWide_ = layout.showAllFromWidth ? std::optional(isWide) : std::nullopt;
    if (!host_.set(&AppValues::isOnWideDisplay, isWide)) {
        return false;
    }
    if (isWide) {
        // The shelf would hold what is in the bar.
        pinShelf(false);
        host_.set(&AppValues::activeStyle, RevealStyle::inline_);
    }
    parts_.log.log("reveal", isWide ? "the broom is on a wide display: nothing is hidden there"
                                    : "the broom is not on a wide display any more: tidying again");
    return true;
}

// The plan

VisibilityPlan Visibility::currentPlan() const {
    const AppValues& values = host_.values();
    if (!values.health().isOk()) {
        return VisibilityPlan::showAll();
    }
    if (values.showingMe) {
        return AllowlistPlanner::showMe(*values.showingMe, parts_.ownBundleID);
    }
    return planFor(values.state);
}

VisibilityPlan Visibility::planFor(const RevealState& state) const {
    const AppValues& values = host_.values();
    const BundleIDs none;
    return AllowlistPlanner::plan({.layout = values.layout,
                                   .state = state,
                                   .inventory = present_,
                                   .ownBundleID = parts_.ownBundleID,
                                   .shareKeep = values.layout.shareKeep,
                                   .style = values.activeStyle,
                                   .poppedOut = values.layout.popOutOnChange ? values.poppedOut : none,
                                   .liveActivity = values.stepsAside(),
                                   .hidesNothing = values.isOnWideDisplay});
}

void Visibility::apply(ApplyRequest request) {
    requireMainThread(parts_.platform.mainThread);
    const VisibilityPlan plan = currentPlan();
    const bool force = request.force;
    const bool isNew = plan != parts_.engine.current();
    if (force || isNew) {
        lastHidingChange_ = parts_.platform.mainThread.now();
    }
    iconsMovedAt_ = isNew ? parts_.platform.mainThread.now() : iconsMovedAt_;
    // The engine is ours and calls nobody back once it is gone, so `this` outlives the completion.
    parts_.engine.apply(plan, force,
                        [this, request = std::move(request)](const MenuBarEngine::Result& result) {
                            applied(request, result);
                        });
}

void Visibility::applied(const ApplyRequest& request, const MenuBarEngine::Result& result) {
    const VisibilityPlan& plan = parts_.engine.current();
    host_.set(&AppValues::isRefused, !result || (host_.values().isRefused && plan.isShowAll()));
    if (!result) {
        parts_.log.log(
            "engine", "FAILED (" + request.reason + "): " + describe(result.error()) + ". Everything shown.");
        if (!host_.values().isPresenting()) {  // the audience goes on watching, so the next plan hides again
            setState(RevealState::collapsed());
        }
    } else if (*result > Uptime::zero() || request.force) {
        parts_.log.log("engine", "applied (" + request.reason + ") in " + roundedMilliseconds(*result) +
                                     " ms: " + describe(plan));
    }
    planInForceChanged();
}

void Visibility::showAll() {
    requireMainThread(parts_.platform.mainThread);
    parts_.engine.showAll();
    lastHidingChange_ = parts_.platform.mainThread.now();
    iconsMovedAt_ = lastHidingChange_;
    planInForceChanged();
}

void Visibility::lookForPlaces() {
    // While icons move, their frames say nothing.
    if (iconsMovedAt_ && parts_.platform.mainThread.now() - *iconsMovedAt_ < settling) {
        return;
    }
    host_.set(&AppValues::withoutPlace,
              MenuBarRoom::withoutPlace(parts_.platform.displays.displays(),
                                        parts_.platform.displays.statusBarThickness(), host_.values().items,
                                        parts_.engine.current()));
}

void Visibility::setPresent(BundleIDs present) {
    present_ = std::move(present);
    countTidied();
}

void Visibility::planInForceChanged() {
    countTidied();
    parts_.answered();
}

void Visibility::countTidied() {
    const VisibilityPlan& plan = parts_.engine.current();
    const auto count = std::ranges::count_if(present_, [&](const BundleID& app) { return plan.hides(app); });
    host_.set(&AppValues::tidiedCount, static_cast<std::size_t>(count));
}

}  // namespace velko
