#include "Velko/Setup/SetupController.h"

#include <algorithm>
#include <set>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Ports/Dialogs.h"
#include "Velko/Settings/SettingsPages.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

using Step = SetupFlow::Step;

SetupController::SetupController(const FaceParts& parts)
    : parts_(parts),
      window_(parts.ports.surfaces, Surfaces::Kind::setup),
      guide_(parts, [this] { permissionDone(); }),
      intro_(parts, [this] { update(); }) {}

void SetupController::show() {
    if (isShown() && flow_.step() != Step::done) {
        window_.raise();
        return;
    }
    prepare();
    const bool isFirst = flow_.kind() == SetupFlow::Kind::first;
    if (flow_.step() == Step::welcome) {
        intro_.play();
    }
    window_.open({.title = isFirst ? "Welcome to Velko" : "Sort Your Menu Bar",
                  .content = tree(),
                  .dismiss =
                      [this](Surface::Dismissal) {
                          putOff();
                          return true;
                      },
                  .closed = [this] { closed(); }},
                 parts_.controller.observe([this] { sync(); }));
    announceStep();
    parts_.host.onVisibilityChange();
}

/// Goes on with a setup that is not finished, with the apps and suggestions of now.
void SetupController::prepare() {
    const AppValues& values = parts_.controller.values();
    const auto kind = values.layout.hasCompletedSetup ? SetupFlow::Kind::resort : SetupFlow::Kind::first;
    if (flow_.kind() != kind || flow_.step() == Step::done) {
        flow_ = SetupFlow(kind);
    } else if (flow_.session()) {
        flow_.forgetSession();
    }
    beginIfKnown();
}

void SetupController::closed() {
    guide_.stop();
    intro_.stop();
    question_.cancel();
    parts_.host.onVisibilityChange();
}

void SetupController::leave() {
    putOff();
    window_.close();
}

/// The user leaves a setup that is not finished. From then on the settings offer it.
void SetupController::putOff() {
    if (flow_.kind() == SetupFlow::Kind::first && flow_.step() != Step::done) {
        parts_.controller.putOffSetup();
    }
}

bool SetupController::isTrusted() const {
    return !parts_.controller.values().problems.trustMissing;
}

// What the user does

SetupActions SetupController::actions() {
    return {
        .goOn = [this] { goOn(); },
        .notNow = [this] { leave(); },
        .back = [this] { change([](SetupFlow& flow) { flow.back(); }); },
        .openPermission = [this] { openPermission(); },
        .decideTiming = [this](bool take) { change([take](SetupFlow& flow) { flow.decideTiming(take); }); },
        .choose = [this](Section section) { change([section](SetupFlow& flow) { flow.choose(section); }); },
        .acceptRest = [this] { change([](SetupFlow& flow) { flow.acceptRest(); }); },
        .review = [this](const BundleID& app) { change([&app](SetupFlow& flow) { flow.review(app); }); },
        .move =
            [this](const BundleID& app, Section section) {
                change([&app, section](SetupFlow& flow) { flow.move(app, section); });
            },
        .chooseNotchedStyle =
            [this](RevealStyle style) {
                change([style](SetupFlow& flow) { flow.chooseNotchedStyle(style); });
            },
        .quitOrganiser = [this] { quitOrganiser(); },
        .moveToApplications = [this] { parts_.host.onMoveToApplications(); },
        .startOver = [this] { askToStartOver(); },
        .apply = [this] { applyAnswers(); },
        .tryAgain = [this] { parts_.controller.tryAgain(); },
        .saveAgain = [this] { parts_.controller.saveNow(); },
        .close = [this] { leave(); }};
}

void SetupController::askToStartOver() {
    question_ = parts_.ports.dialogs.ask({.title = "Start over with the first card?",
                                          .message = "Your answers are forgotten. Nothing has moved yet.",
                                          .confirm = "Start Over",
                                          .cancel = "Cancel"},
                                         [this](bool agreed) {
                                             if (agreed) {
                                                 change([](SetupFlow& flow) { flow.startOver(); });
                                             }
                                         });
}

void SetupController::quitOrganiser() {
    if (const auto& organiser = flow_.imported()) {
        parts_.controller.autopilot().askToQuit(organiser->organiser);
    }
    sync();
}

bool SetupController::isOrganiserRunning() const {
    const auto& found = flow_.imported();
    return found && !found->organiser.empty() && !parts_.platform.workspace.pids(found->organiser).empty();
}

void SetupController::change(const std::function<void(SetupFlow&)>& change) {
    const bool wasWelcome = flow_.step() == Step::welcome;
    change(flow_);
    if (const bool isWelcome = flow_.step() == Step::welcome; isWelcome != wasWelcome) {
        if (isWelcome) {
            intro_.play();
        } else {
            intro_.stop();
        }
    }
    if (flow_.step() != Step::permission) {
        guide_.stop();
    }
    sync();
}

void SetupController::goOn() {
    change([this](SetupFlow& flow) {
        switch (flow.step()) {
            case Step::welcome: flow.leaveWelcome(isTrusted()); break;
            case Step::permission: flow.permissionGiven(); break;
            case Step::sort:
            case Step::found:
            case Step::summary:
            case Step::done: break;
        }
    });
}

void SetupController::openPermission() {
    AX::promptForTrust(parts_.platform);
    AX::openAccessibilitySettings(parts_.platform);
    guide_.start();
}

void SetupController::permissionDone() {
    parts_.ports.application.activate();
    window_.raise();
    change([](SetupFlow& flow) { flow.permissionGiven(); });
}

void SetupController::applyAnswers() {
    const auto& session = flow_.session();
    if (!session) {
        return;
    }
    const auto result = session->result();
    const auto revealing = flow_.revealing(parts_.controller.values().layout.reveal);
    flow_.applied();
    parts_.controller.completeSetup(result);
    if (revealing) {
        parts_.controller.preferences().setReveal(*revealing);
    }
    sync();
}

}  // namespace velko
