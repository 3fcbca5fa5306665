#pragma once

#include <string>

#include "Velko/App/FaceParts.h"
#include "Velko/Apps/FoundAnnouncement.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomFrame;

/// The panel below the broom that shows tucked apps as tiles, while the user reveals them in that style. Main
/// thread.
class ShelfController final : private NonCopyable {
 public:
    /// `broom` outlives the shelf.
    ShelfController(const FaceParts& parts, BroomFrame& broom);

    /// Opens the shelf, updates it, or closes it, as the controller's values say. To be called whenever they
    /// have changed.
    void sync();

 private:
    void type(const std::string& text);
    [[nodiscard]] Surface::Motion motion() const;
    [[nodiscard]] view::Node content(const Surface::Place& place);
    /// The user wants to close the shelf. Returns whether it closes.
    [[nodiscard]] bool onDismiss(Surface::Dismissal how) const;

    FaceParts parts_;
    BroomFrame& broom_;
    OpenSurface panel_;
    std::string typed_;  ///< what the user looks for
    FoundAnnouncement announcement_;
    Subscription placeChanges_;
};

}  // namespace velko
