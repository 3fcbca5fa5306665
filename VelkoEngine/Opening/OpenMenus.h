#pragma once

#include "VelkoEngine/Ports/Platform.h"

namespace velko {

/// Whether another process shows a pop-up menu right now; this program's own menus never count.
[[nodiscard]] bool isAnyMenuOpen(const Platform& platform);

}  // namespace velko
