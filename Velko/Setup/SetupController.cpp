#include "Velko/Setup/SetupController.h"

#include <algorithm>
#include <set>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
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

// What it shows

void SetupController::sync() {
    if (!isShown()) {
        return;
    }
    if (isNoLongerWanted()) {
        window_.close();
        return;
    }
    beginIfKnown();
    update();
}

/// Whether the setup became complete in another way, for instance by an import.
bool SetupController::isNoLongerWanted() const {
    const bool isUnfinished = flow_.kind() == SetupFlow::Kind::first && flow_.step() != Step::done;
    return isUnfinished && parts_.controller.values().layout.hasCompletedSetup;
}

void SetupController::beginIfKnown() {
    const AppValues& values = parts_.controller.values();
    const bool waits = flow_.step() == Step::sort && !flow_.session();
    if (!values.inventoryLoaded || !(waits || flow_.isOutdated(values.layout.sections))) {
        return;
    }
    SortSession session = parts_.host.makeSession();
    const bool isFirst = flow_.kind() == SetupFlow::Kind::first;
    flow_.begin(std::move(session), isFirst ? parts_.host.imported() : std::nullopt, values.layout.sections);
}

void SetupController::update() {
    window_.update(tree());
    announceStep();
}

/// The keyboard's focus does not move when the next step comes, so a screen reader would say nothing.
void SetupController::announceStep() {
    const auto& session = flow_.session();
    std::string words;
    if (flow_.step() == Step::done) {
        words = SetupSteps::spokenDone(TidyOutcome::of(parts_.controller));
    } else if (session && flow_.step() == Step::summary && !session->cards().empty()) {
        words = SetupSteps::spokenSummary(*session);
    } else if (session && flow_.step() == Step::sort && session->current() != nullptr) {
        words = SetupSteps::spokenCard(*session, flow_);
    }
    if (std::exchange(announced_, words) != words && !words.empty()) {
        parts_.ports.surfaces.announce(words);
    }
}

view::Node SetupController::tree() {
    const AppValues& values = parts_.controller.values();
    const SetupActions actions = this->actions();
    const auto& left = flow_.imported();
    const auto& session = flow_.session();
    switch (flow_.step()) {
        case Step::welcome:
            return SetupSteps::welcome(intro_.picture(), parts_.controller.info().isInApplications(),
                                       actions);
        case Step::permission: return SetupSteps::permission(isTrusted(), actions);
        case Step::found:
            if (left && session) {
                return SetupSteps::found(
                    *left, *session,
                    {.others = placesWithoutCard(*left, *session), .isRunning = isOrganiserRunning()},
                    actions);
            }
            break;
        case Step::sort:
            if (session) {
                return SetupSteps::card(*session, flow_, actions);
            }
            break;
        case Step::summary:
            if (session) {
                return SetupSteps::summary(*session, flow_, summaryFacts(), actions);
            }
            break;
        case Step::done:
            return SetupSteps::done(
                TidyOutcome::of(parts_.controller),
                {.saveFailure = values.saveFailure, .loginSwitch = SettingsPages::loginSwitch(parts_)},
                actions);
    }
    return noCards(actions);
}

SetupSteps::SummaryFacts SetupController::summaryFacts() const {
    const AppValues& values = parts_.controller.values();
    SetupSteps::SummaryFacts facts{.whyEmpty = whyNoApps(values), .notchedStyle = {}, .organiser = {}};
    const bool isFirst = flow_.kind() == SetupFlow::Kind::first;
    if (isFirst && !values.managed.notchedStyle &&
        std::ranges::any_of(parts_.platform.displays.displays(), MenuBarStrip::isNotched)) {
        facts.notchedStyle = flow_.notchedStyle().value_or(values.layout.reveal.notchedStyle);
    }
    if (const auto& found = flow_.imported(); found && isOrganiserRunning()) {
        facts.organiser = found->source;
    }
    return facts;
}

view::Node SetupController::noCards(const SetupActions& actions) const {
    const AppValues& values = parts_.controller.values();
    const bool isUnsupported = values.problems.engineUnavailable;
    return SetupSteps::nothingToSort({.why = whyNoApps(values),
                                      .needsPermission = !isUnsupported && values.problems.trustMissing,
                                      .isWaiting = !isUnsupported},
                                     flow_, actions);
}

/// The number of apps that have a place in what was found, that the user may place, and that have no card.
std::size_t SetupController::placesWithoutCard(const ImportedLayout& found,
                                               const SortSession& session) const {
    std::set<BundleID> unseen;
    for (const auto& [bundleID, section] : found.sections) {
        if (canBePlaced(parts_.controller, bundleID) &&
            !parts_.controller.values().managed.places(bundleID)) {
            unseen.insert(bundleID);
        }
    }
    for (const SortCard& card : session.cards()) {
        unseen.erase(card.bundleID);
    }
    return unseen.size();
}

}  // namespace velko
