#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedObservers.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Pointer.h"

namespace velko {

/// The mouse, and the taps that listen to it.
class SimulatedPointer final : public Pointer {
 public:
    /// `accessibility` knows whether the user allows taps.
    SimulatedPointer(MainThread& mainThread, const SimulatedAccessibility& accessibility)
        : mainThread_(mainThread), accessibility_(accessibility), moves_(mainThread) {}

    [[nodiscard]] std::unique_ptr<ClickTap> tapClicks(
        std::function<void(const ClickTapEvent&)> handler) override;

    [[nodiscard]] Point location() const override { return location_; }
    [[nodiscard]] unsigned pressedButtons() const override { return pressed_; }
    [[nodiscard]] Subscription observeMoves(std::function<void()> handler) override {
        return moves_.observe([handler = std::move(handler)](const Moved&) { handler(); });
    }

    /// The pointer moves there: origin at the bottom left of the primary screen.
    void moveTo(Point location);

    /// A button goes down. Taps that are switched off never hear of it. Origin at the top left of the primary
    /// screen.
    void press(Point location, bool isRight = false, bool option = false);
    /// All buttons are up.
    void release() { pressed_ = 0; }
    /// The system switches every tap off, as it does when one is slow, and tells them. With `forGood` they
    /// cannot be switched on again.
    void disableTaps(bool forGood = false);
    /// Every tap stops working and is not told: the permission has been taken away.
    void killTaps();

    bool refusesTaps = false;  ///< though the user allows them

    /// How many taps are installed.
    [[nodiscard]] std::size_t taps() const;
    /// How many of them hear clicks.
    [[nodiscard]] std::size_t listeningTaps() const;
    /// How often the user was asked for Input Monitoring, because a tap was wanted without the permission.
    [[nodiscard]] int inputMonitoringPrompts() const noexcept { return inputMonitoringPrompts_; }
    /// How many observers hear of moves.
    [[nodiscard]] std::size_t moveObservers() const { return moves_.count(); }

 private:
    class Handle;
    struct Moved {};
    struct Tap {
        std::function<void(const ClickTapEvent&)> handler;
        bool isEnabled = true;
        bool isDead = false;
    };

    void tell(const ClickTapEvent& event);

    MainThread& mainThread_;
    const SimulatedAccessibility& accessibility_;
    std::vector<std::weak_ptr<Tap>> taps_;
    SimulatedObservers<Moved> moves_;
    Point location_;
    unsigned pressed_ = 0;
    int inputMonitoringPrompts_ = 0;
};

}  // namespace velko
