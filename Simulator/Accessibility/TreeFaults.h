#pragma once

#include <optional>
#include <string>

#include "Velko/View/Node.h"

// What must hold of everything that a user meets. Pure functions; nothing when all is well, else one line.

namespace velko {

/// Each node has an id of its own, each control says what it is and shows a value that it can have, and no
/// key means two things.
[[nodiscard]] std::optional<std::string> faultIn(const view::Node& root);

/// Each entry has a title, and one that can be chosen does something or opens a submenu.
[[nodiscard]] std::optional<std::string> faultIn(const view::Menu& menu);

}  // namespace velko
