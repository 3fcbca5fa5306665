#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "Velko/Setup/SetupFlow.h"
#include "Velko/Setup/TidyOutcome.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

/// What the user does in the setup.
struct SetupActions {
    std::function<void()> goOn;
    std::function<void()> back;
    std::function<void()> openPermission;
    std::function<void(bool)> decideTiming;
    std::function<void(Section)> choose;
    std::function<void()> acceptRest;
    std::function<void()> startOver;
    std::function<void()> apply;
    std::function<void()> tryAgain;
    std::function<void()> close;
};

/// The setup's steps, each as a tree. Enter goes on, the left arrow goes back, 1 to 3 are the sections.
/// Pure functions.
namespace SetupSteps {

[[nodiscard]] view::Node welcome(view::Drawing picture, const SetupActions& actions);
[[nodiscard]] view::Node permission(bool isTrusted, const SetupActions& actions);
/// `others`: apps that have a place in what was found, and no card. The session is the flow's, as below.
[[nodiscard]] view::Node found(const ImportedLayout& imported, const SortSession& session, std::size_t others,
                               const SetupActions& actions);
/// The session's current card.
[[nodiscard]] view::Node card(const SortSession& session, const SetupFlow& flow, const SetupActions& actions);
/// What a screen reader says of it when it comes up.
[[nodiscard]] std::string spokenCard(const SortSession& session, const SetupFlow& flow);

/// Why there are no cards.
struct NoCards {
    std::string why;
    bool needsPermission = false;
    bool isWaiting = false;  ///< they come by themselves
};
/// Shown instead of cards while there are none to show.
[[nodiscard]] view::Node nothingToSort(const NoCards& reason, const SetupFlow& flow,
                                       const SetupActions& actions);
/// `whyEmpty` says why the session has no cards, if it has none.
[[nodiscard]] view::Node summary(const SortSession& session, const SetupFlow& flow,
                                 const std::string& whyEmpty, const SetupActions& actions);
[[nodiscard]] view::Node done(const TidyOutcome& outcome, const SetupActions& actions);

}  // namespace SetupSteps

}  // namespace velko
