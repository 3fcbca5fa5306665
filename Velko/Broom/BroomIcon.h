#pragma once

#include <optional>

#include "Velko/Ports/StatusItem.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Drawing.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

/// Pictures of Velko's broom. Pure functions.
namespace velko::BroomDrawing {

struct Pose {
    double tilt = 0;  ///< how much more it leans than at rest: degrees, clockwise
    bool hasDot = false;
    bool isPresenting = false;
};

/// The broom for the menu bar: 18 points wide and high, in one ink. The dot is a speck of dust on the floor
/// beside it; while the user presents, a screen stands there.
[[nodiscard]] view::Drawing icon(const Pose& pose);

/// The broom in its colours, `points` wide and high.
[[nodiscard]] view::Drawing coloured(double points);

}  // namespace velko::BroomDrawing

namespace velko {

/// The broom on Velko's icon, which rocks from one side to the other. A timer runs only while it rocks. Each
/// picture is expensive, because it travels through the system's host of the menu bar: there are at most
/// twenty in a second, and none that equals the last. Main thread; what it draws on outlives it.
class BroomIcon final : private NonCopyable {
 public:
    BroomIcon(StatusItem& item, const Surfaces& surfaces, const Platform& platform);

    /// Draws the dot and the screen of who presents beside it, or leaves them out.
    void setMarks(bool hasDot, bool isPresenting);
    /// Rocks to the side, as for icons that are revealed, or back. Where the user wants less motion, it is
    /// there at once.
    void lean(bool over);

 private:
    /// One movement from a tilt to another.
    struct Rock {
        MainThread::Uptime start{};
        double from = 0;
        double to = 0;
    };

    void swing(Rock rock);
    void draw();

    StatusItem& item_;
    const Surfaces& surfaces_;
    Platform platform_;
    BroomDrawing::Pose pose_;
    std::optional<view::Drawing> drawn_;
    Task animation_;
};

}  // namespace velko
