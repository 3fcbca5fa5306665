#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "VelkoEngine/Ports/ProcessID.h"

namespace velko {

/// A window on screen: its level and, where it can be read, its owner.
struct WindowInfo {
    std::optional<std::int64_t> layer;
    std::optional<ProcessID> ownerPID;

    bool operator==(const WindowInfo&) const = default;
};

/// All processes' windows. Any thread.
class Windows {
 public:
    Windows() = default;
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;
    virtual ~Windows() = default;

    /// The windows on screen, front to back; nothing when they cannot be read.
    [[nodiscard]] virtual std::optional<std::vector<WindowInfo>> onScreen() const = 0;

    /// The level of pop-up menus.
    [[nodiscard]] virtual std::int64_t popUpMenuLevel() const = 0;
};

}  // namespace velko
