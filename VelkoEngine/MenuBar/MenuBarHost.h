#pragma once

#include <optional>

#include "VelkoEngine/MenuBar/AX.h"

namespace velko {

/// The process that hosts the menu bar's items. Any thread.
[[nodiscard]] inline std::optional<ProcessID> menuBarHostPID(const Platform& platform) {
    return AX::pid(platform, "com.apple.MenuBarAgent", "MenuBarAgent");
}

}  // namespace velko
