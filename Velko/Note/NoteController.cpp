#include "Velko/Note/NoteController.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Note/NoteView.h"
#include "Velko/Ports/Panels.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"

namespace velko {

namespace {

constexpr double gapBelowBar = 0;  // points; the note's arrow reaches up to the broom

}  // namespace

NoteController::NoteController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts),
      broom_(broom),
      panel_(parts.ports.surfaces, Surfaces::Kind::note),
      placeChanges_(broom_.observePlace([this] { follow(); })) {}

void NoteController::show() {
    close();
    const auto wanted = place();
    if (!wanted) {
        return;
    }
    const NoteQuestions questions = noteQuestions(parts_);
    hasAsked_ = !questions.areAnswered();
    openedAt_ = parts_.controller.values().history.revision();
    spotlessClose_.cancel();
    panel_.open({.place = wanted,
                 .motion = {.fade = parts_.ports.surfaces.reducesMotion() ? Timing::Seconds::zero()
                                                                          : Timing::noteFade},
                 .content = noteView(parts_, questions, openedAt_, [this] { close(); }),
                 .ignoresPress = [this](Point point) { return broom_.holdsUpwards(point); },
                 .closed = [this] { closed(); }},
                parts_.controller.observe([this] { refresh(); }));
    parts_.log.log("note", "shown: " + std::to_string(questions.newIcons.size()) + " new, " +
                               std::to_string(questions.suggestions.size()) + " suggestions");
}

bool NoteController::justClosed() const {
    return closedAt_ && parts_.platform.mainThread.now() - *closedAt_ < Timing::shelfCloseClickGrace;
}

std::optional<Surface::Place> NoteController::place() const {
    return broom_.placeBelow(gapBelowBar);
}

/// Where the broom moves, the note stays in place as long as its arrow can still point at the broom. The user
/// may be about to click in it.
void NoteController::follow() {
    auto wanted = place();
    const auto frame = panel_.frame();
    const auto& now = panel_.place();
    if (!wanted || !frame || !now) {
        return;
    }
    if (wanted->bounds == now->bounds) {
        const double reach = panelArrowReach(frame->width);
        const double middle = wanted->anchor.x + wanted->anchor.width / 2;
        wanted->shift = std::clamp(frame->x + frame->width / 2 - middle, -reach, reach);
    }
    panel_.move(*wanted);
}

void NoteController::refresh() {
    const NoteQuestions questions = noteQuestions(parts_);
    panel_.update(noteView(parts_, questions, openedAt_, [this] { close(); }));
    if (!questions.areAnswered()) {
        hasAsked_ = true;
        spotlessClose_.cancel();
    } else if (hasAsked_ && !spotlessClose_.isPending()) {
        parts_.ports.surfaces.announce(spotlessWords);
        spotlessClose_ =
            Awaited::after(parts_.platform, "the note", Timing::noteSpotlessHold, [this] { close(); });
    }
}

void NoteController::closed() {
    spotlessClose_.cancel();
    closedAt_ = parts_.platform.mainThread.now();
    parts_.controller.note().noteClosed();
}

}  // namespace velko
