#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Pointer.h"

namespace velko {

/// The mouse, and the taps that listen to it.
class SimulatedPointer final : public Pointer {
 public:
    /// `accessibility` knows whether the user allows taps.
    SimulatedPointer(MainThread& mainThread, const Accessibility& accessibility)
        : mainThread_(mainThread), accessibility_(accessibility) {}

    [[nodiscard]] std::unique_ptr<ClickTap> tapClicks(
        std::function<void(const ClickTapEvent&)> handler) override;

    /// A button goes down. Taps that are switched off do not hear of it, now or later.
    void press(Point location);
    /// The system switches every tap off, as it does when one is slow, and tells them.
    void disableTaps();

    /// The taps that are installed.
    [[nodiscard]] std::size_t taps() const;

 private:
    class Handle;
    struct Tap {
        std::function<void(const ClickTapEvent&)> handler;
        bool isEnabled = true;
    };

    void tell(const ClickTapEvent& event);

    MainThread& mainThread_;
    const Accessibility& accessibility_;
    std::vector<std::weak_ptr<Tap>> taps_;
};

}  // namespace velko
