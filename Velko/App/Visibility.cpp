#include "Velko/App/Visibility.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/Log.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"

namespace velko {

namespace {

/// The style for notched displays when the broom stands on one, else the other. The primary display counts
/// while the broom's place is unknown.
RevealStyle styleFor(const std::optional<Rect>& broom, const std::vector<Display>& displays,
                     const RevealSettings& settings) {
    if (displays.empty()) {
        return settings.otherStyle;
    }
    auto holder = displays.begin();
    if (broom) {
        // Accessibility measures downwards from the top of the primary display, displays upwards.
        const Point centre{.x = broom->x + broom->width / 2,
                           .y = displays.front().frame.maxY() - (broom->y + broom->height / 2)};
        const auto found = std::ranges::find_if(
            displays, [&](const Display& display) { return display.frame.contains(centre); });
        holder = found == displays.end() ? holder : found;
    }
    return MenuBarStrip::isNotched(*holder) ? settings.notchedStyle : settings.otherStyle;
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
    if (tidyAnyway(event)) {
        return;
    }
    const RevealState before = host_.values().state;
    RevealState next = RevealMachine::next(before, event);
    if (!before.isRevealed() && next.isRevealed()) {
        chooseStyle();
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

void Visibility::chooseStyle() {
    host_.set(&AppValues::activeStyle, styleFor(parts_.broomFrame(), parts_.platform.displays.displays(),
                                                host_.values().layout.reveal));
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
    const BundleIDs none;
    return AllowlistPlanner::plan({.layout = values.layout,
                                   .state = values.state,
                                   .inventory = present_,
                                   .ownBundleID = parts_.ownBundleID,
                                   .shareKeep = values.layout.shareKeep,
                                   .style = values.activeStyle,
                                   .poppedOut = values.layout.popOutOnChange ? values.poppedOut : none,
                                   .liveActivity = values.stepsAside()});
}

void Visibility::apply(ApplyRequest request) {
    requireMainThread(parts_.platform.mainThread);
    const VisibilityPlan plan = currentPlan();
    const bool force = request.force;
    if (force || plan != parts_.engine.current()) {
        lastHidingChange_ = parts_.platform.mainThread.now();
    }
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
    planInForceChanged();
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
