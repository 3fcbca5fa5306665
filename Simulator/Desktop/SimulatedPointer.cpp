#include "Simulator/Desktop/SimulatedPointer.h"

#include <algorithm>
#include <utility>

namespace velko {

class SimulatedPointer::Handle final : public ClickTap {
 public:
    explicit Handle(std::shared_ptr<Tap> tap) : tap_(std::move(tap)) {}

    void enable() override { tap_->isEnabled = !tap_->isDead; }

    [[nodiscard]] bool isEnabled() const override { return tap_->isEnabled; }

 private:
    std::shared_ptr<Tap> tap_;
};

std::unique_ptr<ClickTap> SimulatedPointer::tapClicks(std::function<void(const ClickTapEvent&)> handler) {
    if (!accessibility_.isPermitted()) {
        // What an app has just shown to be permitted may not be any more; nobody can know that.
        const auto takenAt = accessibility_.takenAt();
        const bool isJustTaken = takenAt && mainThread_.now() - *takenAt < std::chrono::seconds(1);
        inputMonitoringPrompts_ += isJustTaken ? 0 : 1;
        return nullptr;
    }
    if (refusesTaps) {
        return nullptr;
    }
    std::erase_if(taps_, [](const auto& tap) { return tap.expired(); });
    auto tap = std::make_shared<Tap>(Tap{.handler = std::move(handler)});
    taps_.push_back(tap);
    return std::make_unique<Handle>(std::move(tap));
}

void SimulatedPointer::moveTo(Point location) {
    location_ = location;
    moves_.tell({});
}

void SimulatedPointer::press(Point location, bool isRight, bool option) {
    pressed_ |= isRight ? rightButton : 1U;
    tell(
        {.kind = ClickTapEvent::Kind::mouseDown, .location = location, .isRight = isRight, .option = option});
}

void SimulatedPointer::disableTaps(bool forGood) {
    tell({.kind = ClickTapEvent::Kind::disabled});
    for (const auto& weak : taps_) {
        if (const auto tap = weak.lock()) {
            tap->isEnabled = false;
            tap->isDead = tap->isDead || forGood;
        }
    }
}

void SimulatedPointer::killTaps() {
    for (const auto& weak : taps_) {
        if (const auto tap = weak.lock()) {
            tap->isEnabled = false;
            tap->isDead = true;
        }
    }
}

void SimulatedPointer::tell(const ClickTapEvent& event) {
    for (const auto& weak : taps_) {
        const auto tap = weak.lock();
        if (tap && tap->isEnabled) {
            mainThread_.post([weak, event] {
                if (const auto listening = weak.lock()) {
                    listening->handler(event);
                }
            });
        }
    }
}

std::size_t SimulatedPointer::taps() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(taps_, [](const auto& tap) { return !tap.expired(); }));
}

std::size_t SimulatedPointer::listeningTaps() const {
    return static_cast<std::size_t>(std::ranges::count_if(taps_, [](const auto& weak) {
        const auto tap = weak.lock();
        return tap && tap->isEnabled;
    }));
}

}  // namespace velko
