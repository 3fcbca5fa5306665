#include <algorithm>
#include <chrono>
#include <cstddef>
#include <string>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"
#include "Velko/Flows/RevealStyleChoice.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Ports/MainThread.h"

// What the user sees: how a reveal event moves the state, and how the state becomes the system's.

namespace velko {

namespace {

/// To the nearest millisecond, a half upwards.
std::string roundedMilliseconds(Uptime time) {
    return std::to_string((time + std::chrono::microseconds(500)) / std::chrono::milliseconds(1));
}

}  // namespace

// Revealing

bool AppController::consumesClick() {
    return shelfClosing_.takesClick() || showMe_.stop();
}

void AppController::toggle(bool withBuried) {
    if (!shelfClosing_.takesClick()) {
        handle(withBuried ? RevealEvent::toggleWithBuried() : RevealEvent::toggle());
    }
}

void AppController::revealByPointer() {
    set(&AppValues::revealedByPointer, true);
    toggle();
    set(&AppValues::revealedByPointer, values_.state.isRevealed());
}

void AppController::closeShelf(ShelfClosing::By by) {
    if (values_.state.asPeeking() != nullptr) {
        return;
    }
    if (by == ShelfClosing::By::click) {
        shelfClosing_.closedByClick();
    }
    handle(RevealEvent::autoTuck());
}

void AppController::open(const BundleID& bundleID) {
    showMe_.stop();  // it would keep this app's icon hidden
    const auto* const peek = values_.state.asPeeking();
    if (peek != nullptr && peek->bundleID == bundleID) {
        return;  // a second press would close the menu that the first one opens
    }
    recordClick(bundleID);
    opening_.open(bundleID);
}

void AppController::handle(const RevealEvent& event) {
    requireMainThread();
    if (tidyAnyway(event)) {
        return;
    }
    const RevealState before = values_.state;
    RevealState next = RevealMachine::next(before, event);
    if (!before.isRevealed() && next.isRevealed()) {
        set(&AppValues::activeStyle, chooseRevealStyle(platform_, values_.layout.reveal));
    }
    const std::string reason = describe(event);
    if (next != before) {
        log_.log("reveal", reason + ": " + describe(before) + " -> " + describe(next));
    }
    setState(std::move(next));
    apply({.reason = reason});
}

bool AppController::tidyAnyway(const RevealEvent& event) {
    const bool isClick =
        event.kind == RevealEvent::Kind::toggle || event.kind == RevealEvent::Kind::toggleWithBuried;
    if (!isClick || !values_.stepsAside()) {
        return false;
    }
    setState(RevealState::collapsed());
    set(&AppValues::liveActivityDismissed, true);
    log_.log("liveactivity", "broom clicked: tidying anyway until this activity ends");
    apply({.reason = "live activity dismissed"});
    return true;
}

void AppController::setState(RevealState state) {
    set(&AppValues::state, std::move(state));
    set(&AppValues::revealedByPointer, values_.revealedByPointer && values_.state.isRevealed());
    autoTuck_.rearm();
}

// The single road

VisibilityPlan AppController::currentPlan() const {
    if (!values_.health().isOk()) {
        return VisibilityPlan::showAll();
    }
    if (values_.showingMe) {
        return AllowlistPlanner::showMe(*values_.showingMe, info_.bundleID);
    }
    const BundleIDs none;
    return AllowlistPlanner::plan({.layout = values_.layout,
                                   .state = values_.state,
                                   .inventory = present_,
                                   .ownBundleID = info_.bundleID,
                                   .shareKeep = none,
                                   .style = values_.activeStyle,
                                   .poppedOut = values_.layout.popOutOnChange ? values_.poppedOut : none,
                                   .liveActivity = values_.stepsAside()});
}

void AppController::apply(ApplyRequest request) {
    requireMainThread();
    const VisibilityPlan plan = currentPlan();
    const bool force = request.force;
    if (force || plan != engine_->current()) {
        lastHidingChange_ = platform_.mainThread.now();
    }
    // The engine is ours and calls nobody back once it is gone, so `this` outlives the completion.
    engine_->apply(plan, force, [this, request = std::move(request)](const MenuBarEngine::Result& result) {
        applied(request, result);
    });
}

void AppController::tryAgain() {
    apply({.reason = "try again"});
}

void AppController::applied(const ApplyRequest& request, const MenuBarEngine::Result& result) {
    set(&AppValues::isRefused, !result || (values_.isRefused && engine_->current().isShowAll()));
    if (!result) {
        log_.log("engine",
                 "FAILED (" + request.reason + "): " + describe(result.error()) + ". Everything shown.");
        setState(RevealState::collapsed());
    } else if (*result > Uptime::zero() || request.force) {
        log_.log("engine", "applied (" + request.reason + ") in " + roundedMilliseconds(*result) +
                               " ms: " + describe(engine_->current()));
    }
    planInForceChanged();
}

void AppController::showAll() {
    requireMainThread();
    engine_->showAll();
    lastHidingChange_ = platform_.mainThread.now();
    planInForceChanged();
}

void AppController::planInForceChanged() {
    refreshTidiedCount();
    tellChange();
}

void AppController::tellChange() const {
    if (const auto told = onChange) {  // it may replace itself
        told();
    }
}

void AppController::refreshTidiedCount() {
    const VisibilityPlan& plan = engine_->current();
    set(&AppValues::tidiedCount, static_cast<std::size_t>(std::ranges::count_if(
                                     present_, [&](const BundleID& app) { return plan.hides(app); })));
}

}  // namespace velko
