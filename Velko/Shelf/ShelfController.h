#pragma once

#include <functional>

#include "Velko/App/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomFrame;

/// The panel below the broom that shows tucked apps as tiles, while they are revealed in that style. Main
/// thread.
class ShelfController final : private NonCopyable {
 public:
    /// `broom` outlives the shelf.
    ShelfController(const FaceParts& parts, BroomFrame& broom);
    ~ShelfController();

    /// Opens the shelf, shows the present state in it, or closes it. To be called whenever the controller's
    /// values have changed.
    void sync();

    // What the user does in the shelf; to be set before it first opens.

    std::function<void(const BundleID&)> onOpen;           ///< wants an app's menu
    std::function<void(const BundleID&, Section)> onMove;  ///< moves an app to another section
    std::function<void(ShelfDismissal)> onDismiss;         ///< wants the shelf gone; it stays until synced

 private:
    [[nodiscard]] Surface& surface() const;
    [[nodiscard]] Surface::Motion motion() const;
    [[nodiscard]] view::Node content(const Surface::Place& place) const;
    [[nodiscard]] bool dismiss(Surface::Dismissal how) const;

    FaceParts parts_;
    BroomFrame& broom_;
    Surface::Place place_;  ///< of the open shelf
    Subscription broomMoves_;
    Subscription displayChanges_;  ///< the broom may stay where it is
};

}  // namespace velko
