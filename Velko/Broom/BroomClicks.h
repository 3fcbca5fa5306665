#pragma once

#include <functional>
#include <optional>

#include "Velko/Ports/StatusItem.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

struct ClickTapEvent;

/// A click on the broom, as the user meant it.
struct BroomClick {
    bool isRight = false;
    bool option = false;
    bool control = false;

    bool operator==(const BroomClick&) const = default;
};

/// Finds out which clicks on the broom the user made. Clicks come through the menu bar's host, which may
/// describe them wrongly, tell them twice, or not tell them at all. The presses that the click tap hears help
/// to find out. Main thread.
class BroomClicks final : private NonCopyable {
 public:
    /// A second click within this time is the first one, told twice.
    static constexpr MainThread::Uptime sameClick = std::chrono::milliseconds(50);
    /// An event that is older than this does not belong to a click.
    static constexpr MainThread::Uptime stale = std::chrono::milliseconds(500);
    /// How long the host may take until it tells of a press.
    static constexpr MainThread::Uptime telling = std::chrono::milliseconds(400);

    using Handler = std::function<void(const BroomClick&)>;

    /// Whether a press at that point hits the broom: origin at the top left of the primary screen.
    using Holds = std::function<bool(Point)>;

    /// `item` outlives this.
    BroomClicks(const Platform& platform, const StatusItem& item, Holds holds, Handler clicked);

    /// To be called when the icon's action runs.
    void acted(const StatusItem::Click& click);
    /// To be called when a mouse button goes down anywhere. Returns at once.
    void pressed(const ClickTapEvent& press);
    /// To be called when the icon's menu has closed.
    void menuClosed();

 private:
    struct Press {
        MainThread::Uptime at{};
        bool isRight = false;
        bool option = false;
    };

    void waitForAction();
    void openAnyway();

    Platform platform_;
    const StatusItem& item_;
    Holds holds_;
    Handler clicked_;
    std::optional<Press> press_;  ///< the last press on the broom, until its action runs
    std::optional<MainThread::Uptime> clickedAt_;
    std::optional<MainThread::Uptime> menuClosedAt_;
    Task wait_;
};

}  // namespace velko
