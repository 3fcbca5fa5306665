#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "Playground/Web/Fields.h"
#include "Playground/Web/Session.h"

// What the page's user does beside Velko's own surfaces: with the mouse, and in the panels for files.

namespace velko::web {

/// A click on the broom, with the keys and the button that the page tells of.
Done clickBroom(Session& session, const Fields& fields);
/// A click on the icon of an app: the one with that number among those of a process.
Done clickIcon(Session& session, const Fields& fields);
/// A click where nothing is.
Done clickDesktop(Session& session, const Fields& fields);
/// The pointer has gone to the broom, the bar, the shelf or elsewhere.
Done movePointer(Session& session, const Fields& fields);

/// Whether a file in the Documents folder may be called that: a plain name, without a way out of the folder.
[[nodiscard]] bool isPlainFileName(std::string_view name);

/// The files that the user may open, by name.
[[nodiscard]] std::vector<std::string> documentNames(const std::filesystem::path& documents);

/// Answers the open or save panel: with `file`, a name; with `text`, which is kept under that name first; or
/// with neither, which cancels it.
Done answerPanel(Session& session, const Fields& fields);

}  // namespace velko::web
