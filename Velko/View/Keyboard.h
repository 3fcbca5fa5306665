#pragma once

#include "Velko/View/Node.h"

namespace velko::view {

/// Presses the first enabled button, in reading order, that listens to that key. Whether there was one.
bool pressKey(const Node& root, const Shortcut& shortcut);

}  // namespace velko::view
