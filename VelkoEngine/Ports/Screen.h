#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

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

/// A window on screen: what can be read of its level, its owner and its place.
struct WindowInfo {
    std::optional<std::int64_t> layer{};
    std::optional<ProcessID> ownerPID{};
    std::optional<Rect> frame{};  ///< origin at the top left of the primary screen; y grows downwards

    bool operator==(const WindowInfo&) const = default;
};

/// All processes' windows. Any thread.
class Windows : private NonCopyable {
 public:
    virtual ~Windows() = default;

    /// The windows on screen, front to back; nothing when they cannot be read.
    [[nodiscard]] virtual std::optional<std::vector<WindowInfo>> onScreen() const = 0;

    /// The level of pop-up menus.
    [[nodiscard]] virtual std::int64_t popUpMenuLevel() const = 0;
};

}  // namespace velko
