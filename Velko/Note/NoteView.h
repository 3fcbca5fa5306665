#pragma once

#include <functional>
#include <vector>

#include "Velko/Apps/PresentApps.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Habits/Autopilot.h"

namespace velko {

class AppController;
class Workspace;

/// What Velko would like to know.
struct NoteQuestions {
    std::vector<PresentApp> newIcons;         ///< waiting for a place, as they arrived; present or not
    std::vector<TidySuggestion> suggestions;  ///< in ascending order of the apps

    [[nodiscard]] bool areAnswered() const noexcept { return newIcons.empty() && suggestions.empty(); }
};

/// What the note says when there is nothing left to ask.
inline constexpr auto spotlessWords = "Spotless. Nothing to sort.";

[[nodiscard]] NoteQuestions noteQuestions(AppController& controller, const Workspace& workspace);

/// The note: a row for each question, with a button for each answer. The controller outlives the tree.
[[nodiscard]] view::Node noteView(AppController& controller, const NoteQuestions& questions,
                                  const std::function<void()>& close);

}  // namespace velko
