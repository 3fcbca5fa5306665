#pragma once

#include "Playground/Web/Fields.h"
#include "Playground/Web/Session.h"

// What the page's user does with the mouse beside Velko's own surfaces.

namespace velko::web {

/// A click on the broom, with the keys and the button that the page tells of.
Done clickBroom(Session& session, const Fields& fields);
/// A click on the icon of an app: the one with that number among those of a process.
Done clickIcon(Session& session, const Fields& fields);
/// A click where nothing is.
Done clickDesktop(Session& session, const Fields& fields);
/// The pointer has gone to the broom, the bar, the shelf or elsewhere.
Done movePointer(Session& session, const Fields& fields);

}  // namespace velko::web
