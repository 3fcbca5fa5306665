#pragma once

#include <optional>

#include "Velko/App/AppValues.h"
#include "Velko/App/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomFrame;

/// Says that an app did not open its menu: the shelf says it while it is open, otherwise a small panel below
/// the broom does. A screen reader hears it too. Main thread.
class MessageController final : private NonCopyable {
 public:
    /// `broom` outlives this.
    MessageController(const FaceParts& parts, BroomFrame& broom);

    /// Shows what there is to say, or closes. To be called whenever the controller's values have changed.
    void sync();

 private:
    [[nodiscard]] view::Node content() const;

    FaceParts parts_;
    BroomFrame& broom_;
    OpenSurface panel_;
    std::optional<FailedOpening> said_;
    Subscription placeChanges_;
};

}  // namespace velko
