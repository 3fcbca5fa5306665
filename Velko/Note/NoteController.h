#pragma once

#include <cstddef>
#include <optional>

#include "Velko/App/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomFrame;

/// The note that hangs below the broom when Velko has something to ask. Main thread.
class NoteController final : private NonCopyable {
 public:
    /// `broom` outlives the note.
    NoteController(const FaceParts& parts, BroomFrame& broom);

    /// Opens the note, in place of one that is open. Nothing happens without a display.
    void show();
    void close() { panel_.close(); }
    [[nodiscard]] bool isShowing() const { return panel_.isOpen(); }

    /// Whether it closed so shortly before that a click now is the same click that closed it.
    [[nodiscard]] bool justClosed() const;

 private:
    [[nodiscard]] std::optional<Surface::Place> place() const;
    void refresh();
    void follow();
    void closed();

    FaceParts parts_;
    BroomFrame& broom_;
    OpenSurface panel_;
    std::size_t openedAt_ = 0;  ///< the revision of the layout's history when the note opened
    bool hasAsked_ = false;     ///< whether the open note has asked something
    Task spotlessClose_;
    Subscription placeChanges_;
    std::optional<MainThread::Uptime> closedAt_;
};

}  // namespace velko
