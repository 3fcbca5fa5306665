#include "Velko/Note/NoteController.h"

#include <string>
#include <utility>

#include "Velko/AppController.h"
#include "Velko/Log.h"
#include "Velko/Note/NoteView.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Timing.h"
#include "VelkoEngine/Awaited.h"

namespace velko {

NoteController::~NoteController() {
    if (std::exchange(showing_, nullptr)) {
        surface().close();
    }
}

void NoteController::show() {
    close();
    const NoteQuestions questions = noteQuestions(parts_.controller, parts_.platform.workspace);
    showing_ = std::make_shared<Showing>();
    showing_->hasAsked = !questions.areAnswered();
    showing_->changes = parts_.controller.observe([this] { refresh(); });
    surface().open({.isAnimated = !parts_.ports.surfaces.reducesMotion(),
                    .content = noteView(parts_.controller, questions, [this] { close(); }),
                    .closed = [this, weak = std::weak_ptr(showing_)] {
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

void NoteController::refresh() {
    const NoteQuestions questions = noteQuestions(parts_.controller, parts_.platform.workspace);
    surface().update(noteView(parts_.controller, questions, [this] { close(); }));
    if (!questions.areAnswered()) {
        showing_->hasAsked = true;
        showing_->spotlessClose.cancel();
    } else if (showing_->hasAsked && !showing_->spotlessClose.isPending()) {
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
