#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

class MachineThread;
class SimulatedMac;

/// A click on the broom, and how the system reports it.
struct SimulatedClick {
    enum class Telling {
        usual,    ///< all ways in turn
        mouse,    ///< with the mouse's own event
        system,   ///< with a system-defined event about the mouse's buttons
        other,    ///< with an event that says nothing about buttons; a right button is still down
        stale,    ///< without an event of its own: the last event is an old right click
        doubled,  ///< twice
        lost,     ///< not at all: even the icon's action does not run
    };

    bool isRight = false;
    bool option = false;
    bool control = false;
    Telling telling = Telling::usual;
    std::chrono::milliseconds held{0};  ///< how long the button is down, besides the time that a click takes
};

/// Where the system puts the broom, or says that it has put it.
enum class BroomSpot {
    bar,      ///< where its icon shows
    notch,    ///< under the camera housing of the first display that has one
    nowhere,  ///< it has no place yet, or is not allowed to show
    stub,     ///< it shows, but the system says that its frame has no size
};

/// How the system treats Velko's own icon: where it puts the icon, what it says about that place, and how a
/// click reaches Velko.
class SimulatedBroom final : private NonCopyable {
 public:
    static constexpr std::chrono::milliseconds clickTime{90};  ///< from the press to the action

    /// `changed` is called whenever the place has changed. The machine and its thread outlive this.
    SimulatedBroom(SimulatedMac& mac, MachineThread& thread, std::function<void()> changed);

    /// Puts the icon there until the next call. On a Mac without a notch, `notch` means the bar.
    void put(BroomSpot spot);
    /// The system needs that long to place the icon. Until then it says that the icon is at `meanwhile`.
    void settle(BroomSpot meanwhile, std::chrono::milliseconds duration);
    /// What the system says at the moment.
    [[nodiscard]] BroomSpot spot() const noexcept { return settling_.value_or(spot_); }
    /// Whether a person can see the icon and click on it.
    [[nodiscard]] bool isInSight() const noexcept;
    /// Makes the icon's element say what the system says about its place, which may be untrue.
    void writeFrame() const;

    /// `SimulatedMac::clickBroom`.
    bool click(const SimulatedClick& click);

 private:
    SimulatedMac& mac_;
    MachineThread& thread_;
    std::function<void()> changed_;
    BroomSpot spot_ = BroomSpot::bar;
    std::optional<BroomSpot> settling_;  ///< what the system says while it places the broom
    MainThread::Uptime settledAt_{};
};

}  // namespace velko
