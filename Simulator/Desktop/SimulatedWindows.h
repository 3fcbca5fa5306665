#pragma once

#include <vector>

#include "VelkoEngine/Ports/Screen.h"

namespace velko {

/// The windows on screen: the open menu, if there is one, and below it whatever else was put there.
class SimulatedWindows final : public Windows {
 public:
    [[nodiscard]] std::optional<std::vector<WindowInfo>> onScreen() const override;
    [[nodiscard]] std::int64_t popUpMenuLevel() const override { return menuLevel; }

    /// Opens a process's menu in place of any other.
    void openMenu(ProcessID pid) { menuOwner_ = pid; }
    void closeMenu() { menuOwner_.reset(); }
    /// The process whose menu is open.
    [[nodiscard]] std::optional<ProcessID> menuOwner() const noexcept { return menuOwner_; }

    /// Windows below the menu, front to back.
    std::vector<WindowInfo> others;

 private:
    static constexpr std::int64_t menuLevel = 101;

    std::optional<ProcessID> menuOwner_;
};

}  // namespace velko
