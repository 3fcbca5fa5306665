#pragma once

#include <cstddef>
#include <optional>

#include "Velko/View/Node.h"

namespace velko {

class AppController;

/// A short line that says what the user has just changed, with a button that takes it back; or that it was
/// taken back, with one that does it again. Nothing if that was not after `since`, a revision of the history.
/// It belongs where the change was made. The controller outlives it.
[[nodiscard]] std::optional<view::Node> undoLine(AppController& controller, std::size_t since);

}  // namespace velko
