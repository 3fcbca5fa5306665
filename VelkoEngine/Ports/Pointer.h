#pragma once

#include <functional>
#include <memory>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// What a click tap tells its owner.
struct ClickTapEvent {
    enum class Kind {
        mouseDown,  ///< the left or the right button
        disabled,   ///< the system has switched the tap off
    };

    Kind kind = Kind::mouseDown;
    Point location{};  ///< with `mouseDown`: origin at the top left of the primary screen
    bool isRight = false;
    bool option = false;  ///< the key was down

    bool operator==(const ClickTapEvent&) const = default;
};

/// A listener for clicks anywhere on the screen, installed until it is destroyed.
class ClickTap : private NonCopyable {
 public:
    virtual ~ClickTap() = default;

    /// Switches the tap on again after the system has switched it off, which sometimes has no effect.
    virtual void enable() = 0;

    /// Whether the system sends clicks to it. A tap that does not come on again must be replaced.
    [[nodiscard]] virtual bool isEnabled() const = 0;
};

/// The mouse. Main thread.
class Pointer : private NonCopyable {
 public:
    virtual ~Pointer() = default;

    /// Installs a tap that hears buttons going down and changes nothing; null when the system refuses. Call
    /// it only with the Accessibility permission: without it, the system may ask the user for another one.
    /// `handler` must return at once: the system switches off a slow tap.
    [[nodiscard]] virtual std::unique_ptr<ClickTap> tapClicks(
        std::function<void(const ClickTapEvent&)> handler) = 0;

    /// Where the pointer is: origin at the bottom left of the primary screen, y grows upwards.
    [[nodiscard]] virtual Point location() const = 0;

    /// The buttons that are down now: a bit for each, the left one's first.
    [[nodiscard]] virtual unsigned pressedButtons() const = 0;
    static constexpr unsigned rightButton = 1U << 1U;

    /// Calls `handler` on the main thread whenever the pointer has moved, over whatever program, until the
    /// subscription ends.
    [[nodiscard]] virtual Subscription observeMoves(std::function<void()> handler) = 0;
};

}  // namespace velko
