#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

class AppController;
class SetupFlow;
class SortSession;
struct ImportedLayout;

/// How the menu bar looks after the setup.
struct TidyOutcome {
    std::size_t tucked = 0;  ///< hidden icons that a click on the broom shows
    std::size_t buried = 0;  ///< hidden icons that such a click does not show
    bool isAllKept = true;   ///< no app that is present is to be hidden
    bool isRefused = false;  ///< the system did not let Velko hide anything

    [[nodiscard]] static TidyOutcome of(const AppController& controller);
};

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

/// The steps of the setup, each as a tree. Enter goes on, the left arrow goes back, and 1 to 3 choose a
/// section. Pure functions.
namespace SetupSteps {

[[nodiscard]] view::Node welcome(view::Drawing picture, const SetupActions& actions);
[[nodiscard]] view::Node permission(bool isTrusted, const SetupActions& actions);
/// `others`: how many apps have a place in what was found, but no card. The session is the flow's session,
/// here and below.
[[nodiscard]] view::Node found(const ImportedLayout& imported, const SortSession& session, std::size_t others,
                               const SetupActions& actions);
/// The session's current card.
[[nodiscard]] view::Node card(const SortSession& session, const SetupFlow& flow, const SetupActions& actions);
/// What a screen reader says when the card appears.
[[nodiscard]] std::string spokenCard(const SortSession& session, const SetupFlow& flow);

/// Why there are no cards.
struct NoCards {
    std::string why;
    bool needsPermission = false;
    bool isWaiting = false;  ///< the cards will come without the user's help
};
/// Shown in place of a card when there is none.
[[nodiscard]] view::Node nothingToSort(const NoCards& reason, const SetupFlow& flow,
                                       const SetupActions& actions);
/// `whyEmpty` says why the session has no cards; it matters only then.
[[nodiscard]] view::Node summary(const SortSession& session, const SetupFlow& flow,
                                 const std::string& whyEmpty, const SetupActions& actions);
[[nodiscard]] view::Node done(const TidyOutcome& outcome, const SetupActions& actions);

}  // namespace SetupSteps

}  // namespace velko
