#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "Playground/Web/Fields.h"
#include "Playground/Web/Session.h"

namespace velko::web {

/// Whether a file in the Documents folder may be called that: a plain name, without a way out of the folder.
[[nodiscard]] bool isPlainFileName(std::string_view name);

/// The files that the user may open, by name.
[[nodiscard]] std::vector<std::string> documentNames(const std::filesystem::path& documents);

/// Answers the open or save panel: with `file`, a name; with `text`, which is kept under that name first; or
/// with neither, which cancels it.
Done answerPanel(Session& session, const Fields& fields);

}  // namespace velko::web
