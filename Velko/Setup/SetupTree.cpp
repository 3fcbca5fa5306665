#include <algorithm>
#include <set>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/Setup/SetupController.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"

// What the setup shows.

namespace velko {

using Step = SetupFlow::Step;

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
