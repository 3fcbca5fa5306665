#include "Velko/Broom/BroomClicks.h"

#include <utility>

#include "VelkoEngine/Background/Awaited.h"
#include "VelkoEngine/Ports/Pointer.h"

namespace velko {

namespace {

using Event = StatusItem::Event;

/// The event, if it can belong to this click.
const Event* ownEvent(const std::optional<Event>& event) {
    return event && event->age <= BroomClicks::stale ? &*event : nullptr;
}

bool isRight(const Event& event) {
    const bool isByRightButton = event.type == Event::Type::systemDefined &&
                                 event.subtype == Event::mouseButtons &&
                                 (static_cast<std::uint64_t>(event.data) & Pointer::rightButton) != 0;
    return event.type == Event::Type::rightMouse || isByRightButton;
}

}  // namespace

BroomClicks::BroomClicks(const Platform& platform, const StatusItem& item, Holds holds, Handler clicked)
    : platform_(platform), item_(item), holds_(std::move(holds)), clicked_(std::move(clicked)) {}

void BroomClicks::acted(const StatusItem::Click& click) {
    const auto now = platform_.mainThread.now();
    if (clickedAt_ && now - *clickedAt_ < sameClick) {
        return;
    }
    clickedAt_ = now;
    wait_.cancel();
    auto press = std::exchange(press_, std::nullopt);
    if (press && menuClosedAt_ && *menuClosedAt_ >= press->at) {
        press.reset();  // that press closed the menu, and this is another click
    }
    BroomClick made{.isRight = (click.pressedButtons & Pointer::rightButton) != 0};
    if (const Event* const event = ownEvent(click.event)) {
        made.isRight = made.isRight || isRight(*event);
        made.option = event->option || click.option;
        made.control = event->control || click.control;
    } else if (press) {
        made = {.isRight = made.isRight || press->isRight, .option = click.option, .control = click.control};
    }
    // VoiceOver uses these two keys together: a press with both means a plain click.
    if (click.isVoiceOverOn && made.option && made.control) {
        made.option = made.control = false;
    }
    const auto clicked = clicked_;  // the handler may destroy this object
    clicked(made);
}

void BroomClicks::pressed(const ClickTapEvent& press) {
    wait_.cancel();
    press_.reset();
    // The press closes a menu that is open, and means nothing else.
    if (!holds_(press.location) || item_.isMenuOpen()) {
        return;
    }
    press_ = {.at = platform_.mainThread.now(), .isRight = press.isRight, .option = press.option};
    if (press.isRight) {
        waitForAction();
    }
}

void BroomClicks::menuClosed() {
    menuClosedAt_ = platform_.mainThread.now();
}

void BroomClicks::waitForAction() {
    wait_ = Awaited::after(platform_, "a click", telling, [this] { openAnyway(); });
}

void BroomClicks::openAnyway() {
    if ((platform_.pointer.pressedButtons() & Pointer::rightButton) != 0) {
        waitForAction();  // its action comes when the button goes up, and a menu that opens now would close
                          // then
        return;
    }
    const auto press = std::exchange(press_, std::nullopt);
    const bool closedAMenu = press && menuClosedAt_ && press->at - *menuClosedAt_ < telling;
    if (press && !closedAMenu && !item_.isMenuOpen()) {
        const auto clicked = clicked_;  // the handler may destroy this object
        clicked({.isRight = true, .option = press->option});
    }
}

}  // namespace velko
