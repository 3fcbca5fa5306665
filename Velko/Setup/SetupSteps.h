#pragma once

#include <functional>
#include <string>

#include "Velko/Setup/SetupFlow.h"
#include "Velko/View/Node.h"
#include "VelkoCore/RevealSettings.h"
#include "VelkoCore/Section.h"

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
};

/// The setup's steps, each as a tree. Enter goes on, the left arrow goes back, 1 to 3 are the sections.
/// Pure functions.
namespace SetupSteps {

[[nodiscard]] view::Node welcome(view::Drawing picture, const SetupActions& actions);
[[nodiscard]] view::Node permission(bool isTrusted, const SetupActions& actions);
/// `mine` are the reveal settings in force.
[[nodiscard]] view::Node found(const ImportedLayout& imported, const RevealSettings& mine,
                               const SetupActions& actions);
/// The session's current card. The session is the flow's, as below.
[[nodiscard]] view::Node card(const SortSession& session, const SetupFlow& flow, const SetupActions& actions);
/// Shown instead of cards while there are none to show.
[[nodiscard]] view::Node nothingToSort(const std::string& why, const SetupFlow& flow,
                                       const SetupActions& actions);
/// `whyEmpty` says why the session has no cards, if it has none.
[[nodiscard]] view::Node summary(const SortSession& session, const SetupFlow& flow,
                                 const std::string& whyEmpty, const SetupActions& actions);

}  // namespace SetupSteps

}  // namespace velko
