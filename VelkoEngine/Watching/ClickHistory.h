#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Background/Reads.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Pointer.h"

namespace velko {

/// An icon where it was last seen; origin at the top left of the primary screen.
struct KnownIcon {
    ProcessID pid = 0;
    Rect frame;
    bool shows = true;  ///< it is not hidden now
};

/// A click in the menu bar whose owner is to be found.
struct MenuBarClick {
    Point at;  ///< origin at the top left of the primary screen
    std::vector<KnownIcon> shown;
};

/// The process whose icon lies under a click, or whatever the system names there. Blocks for some messages;
/// any thread.
[[nodiscard]] std::optional<ProcessID> ownerOf(const Platform& platform, const MenuBarClick& click);

/// What is known of the menu bar when a click is heard; origin at the top left of the primary screen.
struct KnownBar {
    /// Velko's own icon: empty where there is none, nothing while nobody knows where it is.
    std::optional<Rect> broom = Rect{};
    std::vector<KnownIcon> icons{};  ///< the other apps' icons, as last read
};

/// Notices clicks on menu-bar icons and reports whose they were. Only listens: no click is changed or held
/// up, because asking for the owner happens off the main thread, one click at a time. Main thread.
class ClickHistory final : private NonCopyable {
 public:
    /// Clicks that may wait for their owner to be found; of more, the oldest is dropped.
    static constexpr std::size_t mostWaiting = 32;

    using PressHandler = std::function<void(const ClickTapEvent&)>;

    /// `look` is called amid a click, and quick; `onClick` receives the clicked app. A click left of all
    /// known icons is one on the menus of the app in front, and nobody's icon click. `onPress` is told of
    /// every button that goes down, wherever it is, and must return at once: the system waits for it. All of
    /// them on the main thread.
    ClickHistory(const Platform& platform, std::function<KnownBar()> look,
                 std::function<void(const BundleID&)> onClick, PressHandler onPress = {});

    /// Begins to listen, unless it does; again, if the system has made it deaf. Only with the permission,
    /// or the user may be asked for one that Velko has no use for. The system may refuse all the same.
    void start();

    /// Whether clicks are heard.
    [[nodiscard]] bool isRunning() const { return tap_ != nullptr && tap_->isEnabled(); }

    /// Stops listening and forgets the clicks that wait.
    void stop();

 private:
    void hear(const ClickTapEvent& event);
    void press(Point at);
    void report(std::optional<ProcessID> pid) const;

    Platform platform_;
    std::function<KnownBar()> look_;
    std::function<void(const BundleID&)> onClick_;
    PressHandler onPress_;
    ReadsInTurn<MenuBarClick, std::optional<ProcessID>> hitTests_;
    std::unique_ptr<ClickTap> tap_;
};

}  // namespace velko
