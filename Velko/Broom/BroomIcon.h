#pragma once

#include <optional>

#include "Velko/Broom/BroomDrawing.h"
#include "Velko/Ports/StatusItem.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// The broom on Velko's icon. It rocks from one lean to the other; a timer runs only while it does. Each
/// picture is dear, a round trip through the system's host of the menu bar: there are at most twenty in a
/// second, and none that equals the last. Main thread; what it draws on outlives it.
class BroomIcon final : private NonCopyable {
 public:
    BroomIcon(StatusItem& item, const Surfaces& surfaces, const Platform& platform);

    /// Whether the dot is drawn beside it.
    void setDot(bool shows);
    /// Rocks over, for revealed icons, or back; at once where the user wants less motion.
    void lean(bool over);

 private:
    /// A rock under way.
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
    double angle_ = 0;  ///< the tilt, in degrees
    bool showsDot_ = false;
    std::optional<view::Drawing> drawn_;
    Task animation_;
};

}  // namespace velko
