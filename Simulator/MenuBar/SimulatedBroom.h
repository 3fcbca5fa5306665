#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

class MachineThread;
class SimulatedMac;

/// A click on the broom as a person makes it, and how the system tells of it.
struct SimulatedClick {
    enum class Telling {
        usual,    ///< now in this way and now in that
        mouse,    ///< by the event of the mouse itself
        system,   ///< by a system-defined event about the mouse's buttons
        other,    ///< by an event that says nothing of buttons; a right one is still down
        stale,    ///< not at all: the last event is an old right click
        doubled,  ///< twice
        lost,     ///< not even by the icon's action
    };

    bool isRight = false;
    bool option = false;
    bool control = false;
    Telling telling = Telling::usual;
    std::chrono::milliseconds held{0};  ///< how long the button is down, besides the time that a click takes
};

/// Where the system puts the broom, or says that it is.
enum class BroomSpot {
    bar,      ///< where its icon shows
    notch,    ///< under the camera housing of the first display that has one
    nowhere,  ///< it has not been placed, or is not allowed
    stub,     ///< it shows, and the system gives a frame of no size
};

/// How the system treats Velko's own icon: where it puts it, what it says of that place, and how a click on
/// it arrives.
class SimulatedBroom final : private NonCopyable {
 public:
    static constexpr std::chrono::milliseconds clickTime{90};  ///< from the press to the action

    /// `changed` is called whenever the place has changed. The machine and its thread outlive this.
    SimulatedBroom(SimulatedMac& mac, MachineThread& thread, std::function<void()> changed);

    /// Puts the icon there for good. On a Mac without a notch, `notch` means the bar.
    void put(BroomSpot spot);
    /// The system needs so long to place the icon, and meanwhile says that it is at `meanwhile`.
    void settle(BroomSpot meanwhile, std::chrono::milliseconds duration);
    /// What the system says at the moment.
    [[nodiscard]] BroomSpot spot() const noexcept { return settling_.value_or(spot_); }
    /// Whether a person can see the icon and click on it.
    [[nodiscard]] bool isInSight() const noexcept;
    /// Has the icon's element say what the system says of its place, which may be untrue.
    void writeFrame() const;

    /// `SimulatedMac::clickBroom`.
    bool click(const SimulatedClick& click);

 private:
    SimulatedMac& mac_;
    MachineThread& thread_;
    std::function<void()> changed_;
    BroomSpot spot_ = BroomSpot::bar;
    std::optional<BroomSpot> settling_;  ///< what the system says until the broom has its place
    MainThread::Uptime settledAt_{};
};

}  // namespace velko
