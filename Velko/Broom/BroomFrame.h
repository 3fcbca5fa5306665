#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Velko/App/AppValues.h"
#include "Velko/App/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Screen.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Where Velko's own icon is on the screen. It reads the place again whenever the controller's values or the
/// displays have changed, and whenever somebody asks. A place counts only if it is in a menu bar, where a
/// person can see it. Main thread.
class BroomFrame final : private NonCopyable {
 public:
    /// How long the icon may be out of sight after a start or a change of displays before that is a problem.
    static constexpr std::chrono::seconds settling{10};

    explicit BroomFrame(const FaceParts& parts);

    /// To be called once, when the icon has been put into the menu bar.
    void start() { waitForSight(); }

    /// The icon's frame as last read: origin at the top left of the primary screen, y grows downwards.
    /// Nothing before the first answer that counts.
    [[nodiscard]] std::optional<Rect> chevronFrame() const noexcept { return chevronFrame_; }

    /// Whether a press at that point hits the icon, which also takes presses between its frame and the
    /// screen's edge. Origin at the top left of the primary screen.
    [[nodiscard]] bool holds(Point point) const;
    /// The same with the origin at the bottom left.
    [[nodiscard]] bool holdsUpwards(Point point) const;

    /// Whether the icon exists, but did not come into sight in time.
    [[nodiscard]] bool isOutOfSight() const noexcept { return isOutOfSight_; }

    /// Where a panel hangs that is `gap` points below the menu bar, as `placeBelowBroom` says.
    [[nodiscard]] std::optional<Surface::Place> placeBelow(double gap) const;

    /// Calls `handler` whenever that place may have changed, until the subscription ends.
    [[nodiscard]] Subscription observePlace(const std::function<void()>& handler);

    /// Reads the frame now; nothing when what the system says does not count.
    std::optional<Rect> refresh();

    /// Calls `handler` after the frame has changed, and after the icon has gone out of sight or come back,
    /// until the subscription ends.
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

/// Where a panel hangs: its middle below the broom, `gap` points below the menu bar of the broom's display.
/// While nobody knows where the broom is, it hangs at the right end of the primary display's bar. The broom's
/// frame has its origin at the top left of the primary display, which is the first. Nothing without a
/// display.
[[nodiscard]] std::optional<Surface::Place> placeBelowBroom(const std::optional<Rect>& broom,
                                                            const std::vector<Display>& displays,
                                                            double statusBarThickness, double gap);

}  // namespace velko
