#pragma once

#include <string>

#include "Playground/Web/Fields.h"
#include "Playground/Web/Session.h"

// Velko's menus at the top of the screen. The simulated Mac shows them while one of Velko's windows is open.

namespace velko::web {

/// The titles of the menus; empty while there are none.
[[nodiscard]] std::string drawAppMenus(Session& session);

/// The user opens one of the menus, given by its number, or closes it if it is open.
Done openAppMenu(Session& session, const Fields& fields);

/// The user presses Command, perhaps Shift too, and a key that a menu may have an entry for.
Done pressAppKey(Session& session, const Fields& fields);

}  // namespace velko::web
