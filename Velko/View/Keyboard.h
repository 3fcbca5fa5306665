#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Velko/View/Node.h"

namespace velko::view {

/// Presses the first enabled button, in reading order, that listens to that key. Whether there was one. A
/// key that is held down presses once: its repeats are taken, and do nothing.
bool pressKey(const Node& root, const Shortcut& shortcut, bool isRepeat = false);

enum class Arrow : std::uint8_t { left, right, up, down };

/// The tile to which an arrow leads from the tile `from`: its neighbour, over the end of a row to the next
/// one, or the nearest in the row above or below. From anything else, the first tile. Nothing where the
/// arrow leads nowhere.
[[nodiscard]] std::optional<std::string> tileBeside(const Node& root, std::string_view from, Arrow arrow);

}  // namespace velko::view
