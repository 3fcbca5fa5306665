#pragma once

#include <functional>
#include <optional>

#include "Velko/App/ChangeNotices.h"
#include "Velko/App/FaceParts.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Where Velko's own icon stands. Its place is read anew whenever the controller's values or the displays
/// have changed, and whenever somebody asks for it; only one in a menu bar counts, where a person can see
/// it. Main thread.
class BroomFrame final : private NonCopyable {
 public:
    /// How long the icon may be out of sight after the start or after a change of displays.
    static constexpr std::chrono::seconds settling{10};

    explicit BroomFrame(const FaceParts& parts);

    /// The icon is in the menu bar from now on. Once.
    void start() { waitForSight(); }

    /// The icon's frame as last read: origin at the top left of the primary screen, y grows downwards.
    /// Nothing before the first answer that counts.
    [[nodiscard]] std::optional<Rect> chevronFrame() const noexcept { return chevronFrame_; }

    /// Whether a press there is one on the icon, which reaches from the screen's edge to its frame's. Origin
    /// at the top left of the primary screen.
    [[nodiscard]] bool holds(Point point) const;
    /// The same with the origin at the bottom left.
    [[nodiscard]] bool holdsUpwards(Point point) const;

    /// Whether the icon is there, but has not come into sight in time.
    [[nodiscard]] bool isOutOfSight() const noexcept { return isOutOfSight_; }

    /// Reads it now; nothing when what the system says can't be where the icon stands.
    std::optional<Rect> refresh();

    /// Calls `handler` after the frame has changed or the icon has got out of sight or into it, until the
    /// subscription ends.
    [[nodiscard]] Subscription observe(std::function<void()> handler) {
        return notices_.observe(std::move(handler));
    }

 private:
    [[nodiscard]] bool counts(const Rect& frame) const;
    void displaysChanged();
    void waitForSight();
    void judge();

    Platform platform_;
    Log& log_;
    std::optional<Rect> chevronFrame_;
    bool isOutOfSight_ = false;
    ChangeNotices notices_;
    Task settling_;
    Subscription values_;
    Subscription displays_;
};

}  // namespace velko
