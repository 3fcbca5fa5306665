#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "Velko/App/FaceParts.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Habits/Autopilot.h"

namespace velko {

/// What Velko would like to know.
struct NoteQuestions {
    std::vector<PresentApp> newIcons;         ///< apps that wait for a place, in the order in which they came
    std::vector<TidySuggestion> suggestions;  ///< in ascending order of the apps

    [[nodiscard]] bool areAnswered() const noexcept { return newIcons.empty() && suggestions.empty(); }
};

/// What the note says when there is nothing left to ask.
inline constexpr auto spotlessWords = "Spotless. Nothing to sort.";

[[nodiscard]] NoteQuestions noteQuestions(const FaceParts& parts);

/// The note: a row for each question, with a button for each answer. The keys 1 to 3 answer the first one.
/// Several of a kind can also be answered together. What `parts` names outlives the tree.
/// `since`: the revision of the layout's history when the note opened. What has changed since can be undone.
[[nodiscard]] view::Node noteView(const FaceParts& parts, const NoteQuestions& questions, std::size_t since,
                                  const std::function<void()>& close);

}  // namespace velko
