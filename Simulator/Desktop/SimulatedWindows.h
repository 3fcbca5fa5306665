#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

class SimulatedAccessibility;

/// The windows on screen, the menu that is open, and which app is in front.
class SimulatedWindows final : public Windows {
 public:
    /// `accessibility` outlives this: observers of an app hear there when its menu opens and closes.
    explicit SimulatedWindows(SimulatedAccessibility& accessibility) : accessibility_(accessibility) {}

    [[nodiscard]] std::optional<std::vector<WindowInfo>> onScreen() const override;
    [[nodiscard]] std::int64_t popUpMenuLevel() const override { return menuLevel; }

    /// Opens a process's menu in place of any other.
    void openMenu(ProcessID pid);
    void closeMenu();
    /// The process whose menu is open.
    [[nodiscard]] std::optional<ProcessID> menuOwner() const noexcept { return menuOwner_; }

    /// An app comes to the front.
    void bringToFront(ProcessID pid) { front_ = pid; }
    [[nodiscard]] ProcessID front() const noexcept { return front_; }
    /// Where that app's own menus are in a bar of that height, origin at the top left of the primary screen;
    /// nothing before an app has come to the front, and while it is gone.
    [[nodiscard]] std::optional<Rect> frontMenus(double height) const;

    /// Windows below the menu, front to back.
    std::vector<WindowInfo> others;

 private:
    static constexpr std::int64_t menuLevel = 101;

    SimulatedAccessibility& accessibility_;
    std::optional<ProcessID> menuOwner_;
    ProcessID front_ = 0;
};

}  // namespace velko
