#pragma once

#include <optional>
#include <utility>

#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// Remembers that a click has closed the shelf: when the same click then reaches the broom, it must not
/// open the shelf again. Main thread; owned by the controller.
class ShelfClosing final {
 public:
    /// How the user dismisses the shelf.
    enum class By { click, escape };

    explicit ShelfClosing(const MainThread& clock) : clock_(clock) {}

    void closedByClick() { closedAt_ = clock_.now(); }

    /// Whether a click on the broom now is that click. Asking forgets it.
    [[nodiscard]] bool takesClick() {
        const auto closedAt = std::exchange(closedAt_, std::nullopt);
        return closedAt && clock_.now() - *closedAt < Timing::shelfCloseClickGrace;
    }

 private:
    const MainThread& clock_;
    std::optional<MainThread::Uptime> closedAt_;
};

}  // namespace velko
