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

/// The process whose icon lies under a click, or else the process that the system names there. Blocks for
/// some messages; any thread.
[[nodiscard]] std::optional<ProcessID> ownerOf(const Platform& platform, const MenuBarClick& click);

/// What is known of the menu bar when a click is heard; origin at the top left of the primary screen.
struct KnownBar {
    /// Velko's own icon: an empty frame when there is none, absent while its place is not known.
    std::optional<Rect> broom = Rect{};
    std::vector<KnownIcon> icons{};  ///< the other apps' icons, as last read
};

/// Notices clicks on menu-bar icons and reports whose they were. Only listens: no click is changed or held
/// up, because asking for the owner happens off the main thread, one click at a time. Main thread.
class ClickHistory final : private NonCopyable {
 public:
    /// How many clicks may wait until their owner is found. When there are more, the oldest is dropped.
    static constexpr std::size_t mostWaiting = 32;

    using PressHandler = std::function<void(const ClickTapEvent&)>;

    /// `look` is called while a click waits, so it must be quick. `onClick` receives the clicked app. A click
    /// left of all known icons is on the menus of the app in front, and on no icon. `onPress` is told of
    /// every button that goes down anywhere. It must return at once, because the system waits for it. All
    /// three are called on the main thread.
    ClickHistory(const Platform& platform, std::function<KnownBar()> look,
                 std::function<void(const BundleID&)> onClick, PressHandler onPress = {});

    /// Begins to listen. Does nothing while clicks are heard; begins again after the system has switched the
    /// tap off. Call it only with the Accessibility permission: without it, the system may ask the user for a
    /// permission that Velko does not need. The system may still refuse.
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
