#pragma once

#include <functional>
#include <optional>

#include "Velko/Ports/StatusItem.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Pointer.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomFrame;

/// What somebody has done to the broom.
struct BroomClick {
    bool isRight = false;
    bool option = false;
    bool control = false;

    bool operator==(const BroomClick&) const = default;
};

/// Makes out the clicks on the broom. The menu bar's host, by way of which they come, may describe them
/// badly, twice or not at all; the presses that the click tap hears tell the rest. Main thread.
class BroomClicks final : private NonCopyable {
 public:
    /// A second click so soon is the first one told twice.
    static constexpr MainThread::Uptime sameClick = std::chrono::milliseconds(50);
    /// What happened longer ago than this is no part of a click.
    static constexpr MainThread::Uptime stale = std::chrono::milliseconds(500);
    /// How long the host may take to tell of a press.
    static constexpr MainThread::Uptime telling = std::chrono::milliseconds(400);

    using Handler = std::function<void(const BroomClick&)>;

    /// `item` and `broom` outlive this.
    BroomClicks(const Platform& platform, const StatusItem& item, const BroomFrame& broom, Handler clicked);

    /// The icon's action has run.
    void acted(const StatusItem::Click& click);
    /// A button has gone down somewhere. Returns at once.
    void pressed(const ClickTapEvent& press);
    /// The icon's menu has closed.
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
    const BroomFrame& broom_;
    Handler clicked_;
    std::optional<Press> press_;  ///< the last on the broom, until its action runs
    std::optional<MainThread::Uptime> clickedAt_;
    std::optional<MainThread::Uptime> menuClosedAt_;
    Task wait_;
};

}  // namespace velko
