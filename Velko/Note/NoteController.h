#pragma once

#include <memory>
#include <optional>

#include "Velko/App/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomFrame;

/// The note that drops from the broom when Velko has something to ask. Main thread.
class NoteController final : private NonCopyable {
 public:
    /// `broom` outlives the note.
    NoteController(const FaceParts& parts, BroomFrame& broom);
    ~NoteController();

    /// Opens it, in place of one that is open; without a display, nothing happens.
    void show();
    void close();
    [[nodiscard]] bool isShowing() const;

    /// Whether it closed so shortly ago that a click now is the one that closed it.
    [[nodiscard]] bool justClosed() const;

 private:
    /// One note, from its opening until it is known to have closed.
    struct Showing {
        bool hasAsked = false;
        Task spotlessClose;
        Subscription changes;
    };

    [[nodiscard]] Surface& surface() const;
    [[nodiscard]] std::optional<Surface::Place> place() const;
    void refresh();
    void follow();
    void didClose();

    FaceParts parts_;
    BroomFrame& broom_;
    Surface::Place place_;  ///< of the open note
    Subscription broomMoves_;
    Subscription displayChanges_;
    std::shared_ptr<Showing> showing_;
    std::optional<MainThread::Uptime> closedAt_;
};

}  // namespace velko
