#include "Velko/Setup/SetupController.h"

#include <utility>

#include "Velko/AppController.h"
#include "Velko/Apps/EmptyList.h"
#include "Velko/Ports/Application.h"
#include "VelkoEngine/AX.h"

namespace velko {

using Step = SetupFlow::Step;

SetupController::SetupController(const FaceParts& parts)
    : parts_(parts),
      window_(parts.ports.surfaces.surface(Surfaces::Kind::setup)),
      guide_(parts),
      intro_(parts, [this] { update(); }) {
    guide_.onDone = [this] { permissionDone(); };
}

SetupController::~SetupController() {
    changes_.reset();
    window_.close();
}

void SetupController::show() {
    if (isShown()) {
        window_.raise();
        return;
    }
    prepare();
    const bool isFirst = flow_.kind() == SetupFlow::Kind::first;
    changes_ = std::make_shared<Subscription>(parts_.controller.observe([this] { refresh(); }));
    if (flow_.step() == Step::welcome) {
        intro_.play();
    }
    window_.open({.title = isFirst ? "Welcome to Velko" : "Sort Your Menu Bar",
                  .content = tree(),
                  .closed = [this, weak = std::weak_ptr(changes_)] {
                      // It may have been opened again since.
                      if (!weak.expired()) {
                          closed();
                      }
                  }});
    onVisibilityChange();
}

/// Takes up an unfinished flow, with the apps and suggestions of now.
void SetupController::prepare() {
    const AppValues& values = parts_.controller.values();
    const auto kind = values.layout.hasCompletedSetup ? SetupFlow::Kind::resort : SetupFlow::Kind::first;
    if (flow_.kind() != kind) {
        flow_ = SetupFlow(kind);
    } else if (flow_.session()) {
        flow_.forgetSession();
    }
    beginIfKnown();
}

void SetupController::closed() {
    guide_.stop();
    intro_.stop();
    changes_.reset();
    onVisibilityChange();
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
        .apply = [this] { applyAnswers(); }};
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
    refresh();
}

void SetupController::goOn() {
    change([this](SetupFlow& flow) {
        switch (flow.step()) {
            case Step::welcome: flow.leaveWelcome(isTrusted()); break;
            case Step::permission: flow.permissionGiven(); break;
            case Step::sort: flow.choose(flow.proposed()); break;
            case Step::found:
            case Step::summary: break;
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
    flow_ = SetupFlow(SetupFlow::Kind::resort);
    apply(result);
    if (timing) {
        parts_.controller.preferences().setReveal(*timing);
    }
    window_.close();
}

// What shows

void SetupController::refresh() {
    if (isShown()) {
        beginIfKnown();
        update();
    }
}

void SetupController::beginIfKnown() {
    const bool waits = flow_.step() == Step::sort && !flow_.session();
    if (!waits || !parts_.controller.values().inventoryLoaded) {
        return;
    }
    SortSession session = makeSession();
    flow_.begin(std::move(session), flow_.kind() == SetupFlow::Kind::first ? imported() : std::nullopt);
}

void SetupController::update() {
    window_.update(tree());
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
            if (left) {
                return SetupSteps::found(*left, values.layout.reveal, actions);
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
    }
    return SetupSteps::nothingToSort(whyNoApps(values), flow_, actions);
}

}  // namespace velko
