#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "Velko/View/Node.h"
#include "VelkoCore/Identifiers.h"
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
    std::function<void()> notNow;
    std::function<void()> back;
    std::function<void()> openPermission;
    std::function<void(bool)> decideTiming;
    std::function<void(Section)> choose;
    std::function<void()> acceptRest;
    std::function<void(const BundleID&)> review;
    std::function<void(const BundleID&, Section)> move;
    std::function<void(RevealStyle)> chooseNotchedStyle;
    std::function<void()> quitOrganiser;
    std::function<void()> moveToApplications;
    std::function<void()> startOver;
    std::function<void()> apply;
    std::function<void()> tryAgain;
    std::function<void()> saveAgain;
    std::function<void()> close;
};

/// The steps of the setup, each as a tree. Enter goes on, the left arrow goes back, and 1 to 3 choose a
/// section. Pure functions.
namespace SetupSteps {

/// `isInPlace`: whether Velko is in the Applications folder.
[[nodiscard]] view::Node welcome(view::Drawing picture, bool isInPlace, const SetupActions& actions);
[[nodiscard]] view::Node permission(bool isTrusted, const SetupActions& actions);
/// What else there is to say of what another organiser left behind.
struct FoundFacts {
    std::size_t others = 0;  ///< how many apps have a place in it, but no card
    bool isRunning = false;  ///< the organiser and Velko would get in each other's way
};
/// The session is the flow's session, here and below.
[[nodiscard]] view::Node found(const ImportedLayout& imported, const SortSession& session,
                               const FoundFacts& facts, const SetupActions& actions);
/// Another organiser runs, and is to quit before the answers are applied.
[[nodiscard]] view::Node organiserNotice(const std::string& id, const std::string& organiser,
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

/// What the summary shows beside the cards.
struct SummaryFacts {
    std::string whyEmpty;                     ///< why there are no cards; matters only then
    std::optional<RevealStyle> notchedStyle;  ///< how icons come out beside a notch; nothing without a notch
    std::optional<std::string> organiser;     ///< another organiser that runs
};
[[nodiscard]] view::Node summary(const SortSession& session, const SetupFlow& flow, const SummaryFacts& facts,
                                 const SetupActions& actions);
/// What a screen reader says when the summary appears.
[[nodiscard]] std::string spokenSummary(const SortSession& session);

/// What the last step shows beside the outcome.
struct DoneFacts {
    std::optional<std::string> saveFailure;
    view::Node loginSwitch;
};
[[nodiscard]] view::Node done(const TidyOutcome& outcome, DoneFacts facts, const SetupActions& actions);
[[nodiscard]] std::string spokenDone(const TidyOutcome& outcome);

}  // namespace SetupSteps

}  // namespace velko
