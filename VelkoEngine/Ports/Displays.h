#pragma once

#include <functional>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Subscription.h"

namespace velko {

/// One screen. Rectangles have their origin at the bottom left of the primary screen; y grows upwards.
struct Display {
    Rect frame;
    Rect visibleFrame;        ///< without the menu bar and the Dock
    double safeAreaTop = 0;   ///< height of the camera housing's strip; 0 without one
    Rect auxiliaryTopLeft{};  ///< the usable room left of a camera housing; of no size without one
    Rect auxiliaryTopRight{};

    bool operator==(const Display&) const = default;
};

/// The screens and their menu bars. Main thread.
class Displays : private NonCopyable {
 public:
    virtual ~Displays() = default;

    /// All screens, the primary one first; empty while none is attached.
    [[nodiscard]] virtual std::vector<Display> displays() const = 0;

    /// The height of the system's status bar in points.
    [[nodiscard]] virtual double statusBarThickness() const = 0;

    /// Calls `handler` whenever screens come, go, move or change, until the subscription ends.
    [[nodiscard]] virtual Subscription observeChanges(std::function<void()> handler) = 0;
};

}  // namespace velko
