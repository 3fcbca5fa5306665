#pragma once

#include <functional>
#include <optional>

#include "Velko/ChangeNotices.h"
#include "Velko/FaceParts.h"
#include "VelkoCore/Geometry.h"
#include "VelkoEngine/Ports/Subscription.h"

namespace velko {

/// Where Velko's own icon stands. Its place is read anew whenever the controller's values or the displays
/// have changed, and whenever somebody asks for it. Main thread.
class BroomFrame final {
 public:
    explicit BroomFrame(const FaceParts& parts);
    BroomFrame(const BroomFrame&) = delete;
    BroomFrame& operator=(const BroomFrame&) = delete;
    ~BroomFrame() = default;

    /// The icon's frame as last read: origin at the top left of the primary screen, y grows downwards.
    /// Nothing before the first answer.
    [[nodiscard]] std::optional<Rect> chevronFrame() const noexcept { return chevronFrame_; }

    /// Reads it now.
    void refresh();

    /// Calls `handler` after the frame has changed, until the subscription ends.
    [[nodiscard]] Subscription observe(std::function<void()> handler) {
        return notices_.observe(std::move(handler));
    }

 private:
    Platform platform_;
    std::optional<Rect> chevronFrame_;
    ChangeNotices notices_;
    Subscription values_;
    Subscription displays_;
};

}  // namespace velko
