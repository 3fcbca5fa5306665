#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "VelkoCore/BundleID.h"
#include "VelkoCore/Geometry.h"
#include "VelkoEngine/MenuBarItem.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Pointer.h"
#include "VelkoEngine/Ports/ProcessID.h"
#include "VelkoEngine/ReadsInTurn.h"

namespace velko {

/// Notices clicks on menu-bar icons and reports whose they were. Only listens: no click is changed or held
/// up, because asking for the owner happens off the main thread, one click at a time. Main thread.
class ClickHistory final {
 public:
    /// Clicks that may wait for their owner to be found; of more, the oldest is dropped.
    static constexpr std::size_t mostWaiting = 32;

    using PressHandler = std::function<void(const ClickTapEvent&)>;
    /// The icons that are known, with where they were last.
    using KnownIcons = std::function<std::vector<MenuBarItem>()>;

    /// `onClick` receives the clicked app, on the main thread. A click left of all `known` icons is one on
    /// the menus of the app in front, and nobody's icon click. `onPress` is told of every button that goes
    /// down, wherever it is, and must return at once: the system waits for it.
    ClickHistory(const Platform& platform, KnownIcons known, std::function<void(const BundleID&)> onClick,
                 PressHandler onPress = {});
    ClickHistory(const ClickHistory&) = delete;
    ClickHistory& operator=(const ClickHistory&) = delete;
    ~ClickHistory() = default;

    /// Begins to listen, if it does not yet; without the permission, nothing happens.
    void start();

    [[nodiscard]] bool isRunning() const noexcept { return tap_ != nullptr; }

    /// Stops listening and forgets the clicks that wait.
    void stop();

 private:
    void hear(const ClickTapEvent& event);
    void report(std::optional<ProcessID> pid) const;

    [[nodiscard]] bool mayHitIcon(Point point) const;

    Platform platform_;
    KnownIcons known_;
    std::function<void(const BundleID&)> onClick_;
    PressHandler onPress_;
    ReadsInTurn<Point, std::optional<ProcessID>> hitTests_;
    std::unique_ptr<ClickTap> tap_;
};

}  // namespace velko
