#include "Velko/Setup/SetupController.h"

#include <set>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Setup/SetupSteps.h"
#include "VelkoEngine/MenuBar/AX.h"

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
                  .closed = [this] { closed(); }},
                 parts_.controller.observe([this] { sync(); }));
    announceCard();
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
    parts_.host.onVisibilityChange();
}

bool SetupController::isTrusted() const {
    return !parts_.controller.values().problems.trustMissing;
}

// What the user does

SetupActions SetupController::actions() {
    return {
        .goOn = [this] { goOn(); },
        .back = [this] { change([](SetupFlow& flow) { flow.back(); }); },
        .openPermission = [this] { openPermission(); },
        .decideTiming = [this](bool take) { change([take](SetupFlow& flow) { flow.decideTiming(take); }); },
        .choose = [this](Section section) { change([section](SetupFlow& flow) { flow.choose(section); }); },
        .acceptRest = [this] { change([](SetupFlow& flow) { flow.acceptRest(); }); },
        .startOver = [this] { change([](SetupFlow& flow) { flow.startOver(); }); },
        .apply = [this] { applyAnswers(); },
        .tryAgain = [this] { parts_.controller.tryAgain(); },
        .close = [this] { window_.close(); }};
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
            case Step::sort: flow.choose(flow.proposed()); break;
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
    const auto timing = flow_.timing(parts_.controller.values().layout.reveal);
    flow_.applied();
    parts_.controller.completeSetup(result);
    if (timing) {
        parts_.controller.preferences().setReveal(*timing);
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
    announceCard();
}

/// The keyboard's focus does not move when the next card comes, so a screen reader would say nothing.
void SetupController::announceCard() {
    const auto& session = flow_.session();
    const SortCard* const card = flow_.step() == Step::sort && session ? session->current() : nullptr;
    const BundleID shown = card == nullptr ? BundleID() : card->bundleID;
    if (std::exchange(announced_, shown) != shown && card != nullptr && session) {
        parts_.ports.surfaces.announce(SetupSteps::spokenCard(*session, flow_));
    }
}

view::Node SetupController::tree() {
    const AppValues& values = parts_.controller.values();
    const SetupActions actions = this->actions();
    const auto& left = flow_.imported();
    const auto& session = flow_.session();
    switch (flow_.step()) {
        case Step::welcome: return SetupSteps::welcome(intro_.picture(), actions);
        case Step::permission: return SetupSteps::permission(isTrusted(), actions);
        case Step::found:
            if (left && session) {
                return SetupSteps::found(*left, *session, placesWithoutCard(*left, *session), actions);
            }
            break;
        case Step::sort:
            if (session) {
                return SetupSteps::card(*session, flow_, actions);
            }
            break;
        case Step::summary:
            if (session) {
                return SetupSteps::summary(*session, flow_, whyNoApps(values), actions);
            }
            break;
        case Step::done: return SetupSteps::done(TidyOutcome::of(parts_.controller), actions);
    }
    return noCards(actions);
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
        if (canBePlaced(parts_.controller, bundleID)) {
            unseen.insert(bundleID);
        }
    }
    for (const SortCard& card : session.cards()) {
        unseen.erase(card.bundleID);
    }
    return unseen.size();
}

}  // namespace velko
