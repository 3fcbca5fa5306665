#pragma once

#include <optional>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoEngine/Ports/Screen.h"

/// What depends on the display that the broom stands on. Pure functions; the primary display comes first. The
/// broom's frame has its origin at the top left of the primary display; nothing while nobody knows it.
namespace velko::BroomDisplay {

/// That display. The primary one counts while the broom's place is unknown. Null without a display.
[[nodiscard]] const Display* of(const std::optional<Rect>& broom, const std::vector<Display>& displays);

/// The style that the user has chosen for it: the one for notched displays, or the other.
[[nodiscard]] RevealStyle style(const std::optional<Rect>& broom, const std::vector<Display>& displays,
                                const RevealSettings& settings);

/// Whether it is so wide that the user wants nothing hidden there. While the broom's place is unknown and
/// some displays are that wide but not all, `before` holds: the broom has no place for a moment whenever
/// displays come and go. Without `before` the primary display counts.
[[nodiscard]] bool isWide(const std::optional<Rect>& broom, const std::vector<Display>& displays,
                          const Layout& layout, std::optional<bool> before);

}  // namespace velko::BroomDisplay
