#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "Playground/Web/Fields.h"
#include "Playground/Web/Session.h"

// What the user of the page does outside Velko's own surfaces: with the mouse, and in the panels for files.

namespace velko::web {

/// A click on the broom. The page says which keys and which button.
Done clickBroom(Session& session, const Fields& fields);
/// A click on an icon of an app, given by its process and its number among the icons of that process.
Done clickIcon(Session& session, const Fields& fields);
/// A click on the empty desktop.
Done clickDesktop(Session& session, const Fields& fields);
/// The pointer has moved to the broom, the bar, the shelf or elsewhere.
Done movePointer(Session& session, const Fields& fields);

/// Whether a file in the Documents folder may have that name. It must be a plain name that cannot lead out of
/// the folder.
[[nodiscard]] bool isPlainFileName(std::string_view name);

/// The names of the files that the user may open, in order.
[[nodiscard]] std::vector<std::string> documentNames(const std::filesystem::path& documents);

/// Answers the panel for opening or saving. `file` is the chosen name; without it the panel is cancelled.
/// `text`, if there is one, is first written to that file.
Done answerPanel(Session& session, const Fields& fields);

}  // namespace velko::web
