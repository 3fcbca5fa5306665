#pragma once

#include <optional>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Platform.h"

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

}  // namespace velko
