#pragma once

#include "VelkoCore/Layout/Section.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

/// The style for a reveal now: the one for notched displays when the broom stands on one, else the other.
/// The primary display counts while the broom's place is unknown. Main thread.
[[nodiscard]] RevealStyle chooseRevealStyle(const Platform& platform, const RevealSettings& settings);

}  // namespace velko
