#include "Velko/Note/NoteController.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"
#include "Velko/Broom/BelowBroom.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Note/NoteView.h"
#include "Velko/Ports/PanelPlacement.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

namespace {

constexpr double gapBelowBar = 0;  // its arrow reaches up to the broom

}  // namespace

NoteController::NoteController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts),
      broom_(broom),
      broomMoves_(broom_.observe([this] { follow(); })),
      displayChanges_(parts_.platform.displays.observeChanges([this] { follow(); })) {}

NoteController::~NoteController() {
    if (std::exchange(showing_, nullptr)) {
        surface().close();
    }
}

void NoteController::show() {
    close();
    const auto wanted = place();
    if (!wanted) {
        return;
    }
    place_ = *wanted;
    const NoteQuestions questions = noteQuestions(parts_.controller, parts_.platform.workspace);
    showing_ = std::make_shared<Showing>();
    showing_->hasAsked = !questions.areAnswered();
    showing_->changes = parts_.controller.observe([this] { refresh(); });
    surface().open({.title = std::string(Surfaces::traitsOf(Surfaces::Kind::note).title),
                    .place = place_,
                    .motion = {.fade = parts_.ports.surfaces.reducesMotion() ? 0 : Timing::noteFade},
                    .content = noteView(parts_.controller, questions, [this] { close(); }),
                    .ignoresPress = [this](Point point) { return broom_.holdsUpwards(point); },
                    .closed =
                        [this, weak = std::weak_ptr(showing_)] {
                            // Another note may have taken the place of the one that has closed.
                            if (!weak.expired()) {
                                didClose();
                            }
                        }});
    parts_.log.log("note", "shown: " + std::to_string(questions.newIcons.size()) + " new, " +
                               std::to_string(questions.suggestions.size()) + " suggestions");
}

void NoteController::close() {
    surface().close();
}

bool NoteController::isShowing() const {
    return surface().isOpen();
}

bool NoteController::justClosed() const {
    return closedAt_ && parts_.platform.mainThread.now() - *closedAt_ < Timing::shelfCloseClickGrace;
}

Surface& NoteController::surface() const {
    return parts_.ports.surfaces.surface(Surfaces::Kind::note);
}

std::optional<Surface::Place> NoteController::place() const {
    return placeBelowBroom(broom_.chevronFrame(), parts_.platform.displays.displays(),
                           parts_.platform.displays.statusBarThickness(), gapBelowBar);
}

/// Stays where it is under the hand, as long as its arrow reaches the broom from there.
void NoteController::follow() {
    auto wanted = place();
    const auto frame = surface().frame();
    if (!showing_ || !wanted || !frame) {
        return;
    }
    if (wanted->bounds == place_.bounds) {
        const double reach = panelArrowReach(frame->width);
        const double middle = wanted->anchor.x + wanted->anchor.width / 2;
        wanted->shift = std::clamp(frame->x + frame->width / 2 - middle, -reach, reach);
    }
    if (*wanted != place_) {
        place_ = *wanted;
        surface().move(place_);
    }
}

void NoteController::refresh() {
    const NoteQuestions questions = noteQuestions(parts_.controller, parts_.platform.workspace);
    surface().update(noteView(parts_.controller, questions, [this] { close(); }));
    if (!questions.areAnswered()) {
        showing_->hasAsked = true;
        showing_->spotlessClose.cancel();
    } else if (showing_->hasAsked && !showing_->spotlessClose.isPending()) {
        parts_.ports.surfaces.announce(spotlessWords);
        showing_->spotlessClose =
            Awaited::after(parts_.platform, "the note", Timing::noteSpotlessHold, [this] { close(); });
    }
}

void NoteController::didClose() {
    showing_.reset();
    closedAt_ = parts_.platform.mainThread.now();
    parts_.controller.note().noteClosed();
}

}  // namespace velko
