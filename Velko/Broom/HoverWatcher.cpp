#include "Velko/Broom/HoverWatcher.h"

#include <optional>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoEngine/Background/Awaited.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/Pointer.h"

namespace velko {

namespace {

constexpr double broomMargin = 4;  // points around the broom that count as the broom

[[nodiscard]] Rect grown(const Rect& frame, double margin) {
    return {.x = frame.x - margin,
            .y = frame.y - margin,
            .width = frame.width + 2 * margin,
            .height = frame.height + 2 * margin};
}

}  // namespace

void HoverWatcher::sync() {
    if (!parts_.controller.values().layout.reveal.hover) {
        moves_.end();
        pending_.cancel();
    } else if (!moves_.isActive()) {
        moves_ = parts_.platform.pointer.observeMoves([this] { check(); });
    }
    if (!isRevealed()) {
        revealedByHover_ = false;
    }
}

void HoverWatcher::broomClicked() {
    pending_.cancel();
    ignoresBroom_ = true;
}

void HoverWatcher::check() {
    const std::vector<Display> displays = parts_.platform.displays.displays();
    if (displays.empty()) {
        return;
    }
    const PointerPlace at = look(displays);
    ignoresBroom_ = ignoresBroom_ && at.overBroom;
    const AppValues& values = parts_.controller.values();
    if (ignoresBroom_ || values.isEverythingOut() || values.isPresenting()) {
        return;
    }
    const bool revealed = isRevealed();
    if (at.overBroom && !revealed) {
        schedule(Timing::hoverRevealDelay, [this] { reveal(); });
    } else if (revealedByHover_ && revealed && !at.inBar) {
        schedule(Timing::hoverTuckDelay, [this] { tuck(); });
    } else if (!at.inBar && !at.overBroom) {
        // When a tuck is pending, it stays pending.
        if (!revealed) {
            pending_.cancel();
        }
    } else if (revealedByHover_) {
        pending_.cancel();
    }
}

HoverWatcher::PointerPlace HoverWatcher::look(const std::vector<Display>& displays) const {
    const Point pointer = parts_.platform.pointer.location();
    const Point downwards{.x = pointer.x, .y = displays.front().frame.maxY() - pointer.y};
    const Display* const under = MenuBarStrip::displayUnder(displays, pointer);
    const Display& display = under == nullptr ? displays.front() : *under;
    const double barHeight = MenuBarStrip::height(display, parts_.platform.displays.statusBarThickness());
    const auto broom = broom_.chevronFrame();
    const auto shelf = parts_.ports.surfaces.surface(Surfaces::Kind::shelf).frame();
    return {.overBroom = broom && grown(*broom, broomMargin).contains(downwards),
            .inBar = display.frame.maxY() - pointer.y <= barHeight || (shelf && shelf->contains(pointer))};
}

bool HoverWatcher::isRevealed() const {
    const RevealState* state = &parts_.controller.values().state;
    while (const auto* const shared = state->asShareSafe()) {
        state = &shared->previous;
    }
    return state->asPeeking() == nullptr && state->isRevealed();
}

void HoverWatcher::schedule(Timing::Duration delay, std::function<void()> action) {
    if (!pending_.isPending()) {
        pending_ = Awaited::after(parts_.platform, "hovering", delay, std::move(action));
    }
}

void HoverWatcher::reveal() {
    // Otherwise the toggle would hide what is out for a Live Activity, or close the app that peeks.
    const AppValues& values = parts_.controller.values();
    if (isRevealed() || values.isEverythingOut() || values.isPresenting() ||
        values.state.asPeeking() != nullptr) {
        return;
    }
    parts_.controller.revealByPointer();
    revealedByHover_ = isRevealed();
}

void HoverWatcher::tuck() {
    const Surface& shelf = parts_.ports.surfaces.surface(Surfaces::Kind::shelf);
    const AppValues& values = parts_.controller.values();
    if (revealedByHover_ && isRevealed() && !values.stepsAside() && !values.isPresenting() &&
        !values.isShelfPinned && !isAnyMenuOpen(parts_.platform) && !shelf.isInHand()) {
        revealedByHover_ = false;
        parts_.controller.toggle();
    }
}

}  // namespace velko
