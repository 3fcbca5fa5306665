#include "Velko/Broom/StatusItemController.h"

#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/App/Health.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Broom/BroomClicks.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Broom/BroomIcon.h"
#include "Velko/Broom/StatusMenus.h"
#include "Velko/Flows/GlobalKeys.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Note/NoteController.h"
#include "Velko/Ports/StatusItem.h"
#include "VelkoEngine/Ports/Pointer.h"

namespace velko {

namespace {

std::string toolTipFor(const AppValues& values, bool hasQuestion) {
    if (values.isRefused) {
        return std::string(refusalInWords) + " Try again in Settings.";
    }
    if (hasQuestion && !values.noteDeferred) {
        return "Velko has something to ask. Click to see.";
    }
    if (values.isPresenting()) {
        return "Presenting: only the icons that you chose show. Click for the menu.";
    }
    if (values.hidesNothing()) {
        return "Nothing is hidden on this wide display. Click for the menu.";
    }
    if (values.stepsAside()) {
        return "An iPhone Live Activity is on, so everything's out. Click to tidy anyway.";
    }
    if (values.state.isRevealed()) {
        return "Click to tidy up";
    }
    return "Click to show tucked icons. Right-click for more.";
}

}  // namespace

StatusItemController::StatusItemController(const FaceParts& parts, BroomFrame& frame)
    : parts_(parts),
      frame_(frame),
      clicks_(std::make_unique<BroomClicks>(
          parts.platform, parts.ports.statusItem, [&frame](Point point) { return frame.holds(point); },
          [this](const BroomClick& click) { clicked(click); })),
      actions_(std::make_shared<MenuActions>(parts)) {}

StatusItemController::~StatusItemController() = default;

void StatusItemController::start() {
    parts_.ports.statusItem.install("VelkoChevron", "Velko",
                                    [this, alive = std::weak_ptr(actions_)](const StatusItem::Click& click) {
                                        if (!alive.expired()) {
                                            clicks_->acted(click);
                                        }
                                    });
    update();
}

NoteController& StatusItemController::note() {
    if (!note_) {
        note_ = std::make_unique<NoteController>(parts_, frame_);
    }
    return *note_;
}

// What it shows

void StatusItemController::update() {
    if (parts_.controller.values().isPresenting() && note_ && note_->isShowing()) {
        note_->close();  // an audience sees no questions
    }
    if (parts_.controller.values().health().isOk()) {
        showBroom();
    } else {
        showProblem();
    }
}

void StatusItemController::showProblem() {
    broom_.reset();
    shownRevealed_.reset();
    if (!std::exchange(showsProblem_, true)) {
        parts_.ports.statusItem.setImage(
            StatusItem::Symbol{.name = "exclamationmark.triangle", .description = "Velko"});
    }
    showToolTip("Velko needs attention. Right-click for details.");
}

void StatusItemController::showBroom() {
    const AppValues& values = parts_.controller.values();
    const bool hasQuestion = parts_.controller.note().isAnythingToAsk();
    const bool isRevealed = values.state.isRevealed();
    showsProblem_ = false;
    if (!broom_) {
        broom_ = std::make_unique<BroomIcon>(parts_.ports.statusItem, parts_.ports.surfaces, parts_.platform);
    }
    broom_->setMarks(hasQuestion, values.isPresenting());
    if (std::exchange(shownRevealed_, isRevealed) != isRevealed) {
        broom_->lean(isRevealed);
    }
    showToolTip(toolTipFor(values, hasQuestion));
}

void StatusItemController::showToolTip(const std::string& text) {
    if (std::exchange(toolTip_, text) != text) {
        parts_.ports.statusItem.setToolTip(text);
    }
}

// Clicks

void StatusItemController::pressed(const ClickTapEvent& press) {
    if (!frame_.chevronFrame()) {
        frame_.refresh();
    }
    // A press that closes the icon's menu runs no action, but the pointer is on the icon all the same.
    if (frame_.holds(press.location)) {
        parts_.host.onClick();
    }
    clicks_->pressed(press);
}

void StatusItemController::clicked(const BroomClick& click) {
    frame_.refresh();
    parts_.host.onClick();
    if (click.isRight || click.control) {
        openMenu(click.option);
        return;
    }
    AppController& controller = parts_.controller;
    const AppValues& values = controller.values();
    const bool isRevealed = values.state.isRevealed();
    const bool hasNothingToShow = values.isPresenting() || (!isRevealed && hiddenApps(controller).areNone());
    if (!values.health().isOk() || hasNothingToShow) {
        openMenu(false);
        return;
    }
    if (controller.consumesClick() || closesNote()) {
        return;
    }
    const bool asks =
        !click.option && !isRevealed && !values.noteDeferred && controller.note().isAnythingToAsk();
    if (!asks && values.hidesNothing() && !isRevealed) {
        openMenu(false);  // there is nothing to bring out
    } else if (!asks) {
        controller.toggle(click.option);
    } else if (values.state.asPeeking() == nullptr) {
        note().show();
    }
}

bool StatusItemController::closesNote() {
    if (note_ && note_->isShowing()) {
        note_->close();
        return true;
    }
    return note_ && note_->justClosed();
}

void StatusItemController::openMenu(bool isForDebugging) {
    view::Menu menu =
        isForDebugging ? StatusMenus::debugMenu(parts_, actions_) : StatusMenus::mainMenu(parts_, actions_);
    if (note_ && note_->isShowing()) {
        note_->close();
    }
    // The system holds back presses of Velko's keys while its menu is open, and delivers them afterwards.
    keysPause_ = parts_.controller.keys().pause();
    parts_.ports.statusItem.openMenu(std::move(menu), [this, alive = std::weak_ptr(actions_)] {
        if (!alive.expired()) {
            keysPause_.end();
            clicks_->menuClosed();
        }
    });
}

}  // namespace velko
