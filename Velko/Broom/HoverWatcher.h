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

/// Reveals when the pointer rests on the broom and tidies when it then leaves the bar, while the user has
/// switched that on. It asks for the same as a click on the broom does. Main thread.
class HoverWatcher final : private NonCopyable {
 public:
    /// `broom` outlives the watcher.
    HoverWatcher(const FaceParts& parts, const BroomFrame& broom) : parts_(parts), broom_(broom) {}

    /// To be called whenever the controller's values have changed.
    void sync();
    /// The broom was clicked, whatever came of it: the click decides, and not the pointer, until that has
    /// left the broom.
    void broomClicked();

 private:
    /// Where the pointer is, as far as hovering cares.
    struct Sight {
        bool overBroom = false;
        bool inBar = false;  ///< in a menu bar or over the shelf
    };

    void check();
    [[nodiscard]] Sight look(const std::vector<Display>& displays) const;
    [[nodiscard]] bool isRevealed() const;
    void schedule(Timing::Duration delay, std::function<void()> action);
    void reveal();
    void tuck();

    FaceParts parts_;
    const BroomFrame& broom_;
    Subscription moves_;  ///< active while hovering is switched on
    Task pending_;
    bool revealedByHover_ = false;  ///< so hovering may end it
    bool isDeaf_ = false;           ///< to a pointer that still is where it has clicked
};

}  // namespace velko
