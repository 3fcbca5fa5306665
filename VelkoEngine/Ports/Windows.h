#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// A window on screen: what can be read of its level, its owner and its place.
struct WindowInfo {
    std::optional<std::int64_t> layer{};
    std::optional<ProcessID> ownerPID{};
    std::optional<Rect> frame{};  ///< origin at the top left of the primary screen; y grows downwards

    bool operator==(const WindowInfo&) const = default;
};

/// All processes' windows. Any thread.
class Windows : private NonCopyable {
 public:
    virtual ~Windows() = default;

    /// The windows on screen, front to back; nothing when they cannot be read.
    [[nodiscard]] virtual std::optional<std::vector<WindowInfo>> onScreen() const = 0;

    /// The level of pop-up menus.
    [[nodiscard]] virtual std::int64_t popUpMenuLevel() const = 0;
};

}  // namespace velko
