#pragma once

#include <cstddef>
#include <functional>
#include <variant>
#include <vector>

#include "Simulator/Desktop/SimulatedObservers.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

/// The screens, in any arrangement.
class SimulatedDisplays final : public Displays {
 public:
    /// Without any display: a desk screen.
    SimulatedDisplays(MainThread& mainThread, std::vector<Display> displays)
        : displays_(displays.empty() ? std::vector{plain()} : std::move(displays)), observers_(mainThread) {}

    /// A laptop's screen with a camera housing, its lower left corner at `origin`.
    [[nodiscard]] static Display notched(Point origin = {});
    /// A desk screen, its lower left corner at `origin`.
    [[nodiscard]] static Display plain(Point origin = {}, Size size = {1920, 1080});

    [[nodiscard]] std::vector<Display> displays() const override { return displays_; }
    /// The height of the primary screen's bar.
    [[nodiscard]] double statusBarThickness() const override;
    [[nodiscard]] Subscription observeChanges(std::function<void()> handler) override;

    /// Who observes the screens.
    [[nodiscard]] std::size_t observers() const { return observers_.count(); }

    /// Rearranges the screens, the primary one first, and tells whoever observes.
    void set(std::vector<Display> displays);

 private:
    std::vector<Display> displays_;
    SimulatedObservers<std::monostate> observers_;
};

}  // namespace velko
