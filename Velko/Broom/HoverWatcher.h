#pragma once

#include <functional>
#include <vector>

#include "Velko/App/FaceParts.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/Screen.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomFrame;

/// While the user has switched hovering on: reveals when the pointer rests on the broom, and tidies when the
/// pointer has left the bar again. It asks the controller for the same as a click on the broom. Main thread.
class HoverWatcher final : private NonCopyable {
 public:
    /// `broom` outlives the watcher.
    HoverWatcher(const FaceParts& parts, const BroomFrame& broom) : parts_(parts), broom_(broom) {}

    /// To be called whenever the controller's values have changed.
    void sync();
    /// To be called when the broom is clicked. The click decides what happens; the pointer decides nothing
    /// until it has left the broom.
    void broomClicked();

 private:
    /// What hovering wants to know about the pointer.
    struct PointerPlace {
        bool overBroom = false;
        bool inBar = false;  ///< in a menu bar or over the shelf
    };

    void check();
    [[nodiscard]] PointerPlace look(const std::vector<Display>& displays) const;
    [[nodiscard]] bool isRevealed() const;
    void schedule(Timing::Duration delay, std::function<void()> action);
    void reveal();
    void tuck();

    FaceParts parts_;
    const BroomFrame& broom_;
    Subscription moves_;  ///< active while hovering is switched on
    Task pending_;
    bool revealedByHover_ = false;  ///< hovering has revealed, so it may also tidy
    bool ignoresBroom_ = false;     ///< the pointer has clicked and not left the broom since
};

}  // namespace velko
