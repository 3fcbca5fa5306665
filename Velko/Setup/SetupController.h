#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "Velko/App/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/Setup/Intro.h"
#include "Velko/Setup/PermissionGuide.h"
#include "Velko/Setup/SetupFlow.h"
#include "Velko/Setup/SetupSteps.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// The window of the setup: at the first run the introduction and the permission, and then, as whenever the
/// user wants it later, the sort of all apps. Nothing changes before "Apply to Menu Bar". A window that the
/// user closes half-way keeps the answers until it opens again, except for apps that the user has put
/// somewhere else since; it does not open by itself again. Main thread.
class SetupController final : private NonCopyable {
 public:
    explicit SetupController(const FaceParts& parts);

    /// Opens the window or brings it to the front. Once the setup is complete, it starts with the cards.
    void show();
    [[nodiscard]] bool isShown() const { return window_.isOpen(); }
    /// Shows what holds now. To be called when the system has taken a plan. The window hears of changed
    /// values itself.
    void sync();

    /// Opens the system's settings where the user gives the permission, with a guide that points at the list.
    void openPermission();

 private:
    void prepare();
    [[nodiscard]] SetupActions actions();
    void change(const std::function<void(SetupFlow&)>& change);
    void goOn();
    void permissionDone();
    void applyAnswers();
    void update();
    void leave();
    void putOff();
    void askToStartOver();
    void quitOrganiser();
    void announceStep();
    void beginIfKnown();
    [[nodiscard]] bool isNoLongerWanted() const;
    void closed();
    [[nodiscard]] bool isTrusted() const;
    [[nodiscard]] view::Node tree();
    [[nodiscard]] view::Node noCards(const SetupActions& actions) const;
    [[nodiscard]] SetupSteps::SummaryFacts summaryFacts() const;
    [[nodiscard]] bool isOrganiserRunning() const;
    [[nodiscard]] std::size_t placesWithoutCard(const ImportedLayout& found,
                                                const SortSession& session) const;

    FaceParts parts_;
    OpenSurface window_;
    SetupFlow flow_{SetupFlow::Kind::first};
    PermissionGuide guide_;
    IntroPlayer intro_;
    Task question_;
    std::string announced_;  ///< what was said of the step that shows; empty if nothing
};

}  // namespace velko
