#include "Scenarios/Model/Model.h"

#include <string_view>
#include <utility>

#include "Scenarios/Model/Model.h"
#include "Scenarios/Model/StepCheck.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"

namespace velko::scenarios {

namespace model {

namespace {

/// From "date  [category] text".
Happening parsed(std::string_view line, MainThread::Uptime at) {
    constexpr std::string_view before = "  [";
    constexpr std::string_view after = "] ";
    const auto begin = line.find(before) + before.size();
    const auto end = line.find(after, begin);
    return {.at = at,
            .category = std::string(line.substr(begin, end - begin)),
            .text = std::string(line.substr(end + after.size()))};
}

}  // namespace

Recorder::Recorder(World& world)
    : world_(world), nextOnTurn_(std::exchange(world.mac().mainThread.onTurn, nullptr)) {
    world_.mac().mainThread.onTurn = [this] {
        look();
        if (nextOnTurn_) {
            nextOnTurn_();
        }
    };
}

Recorder::~Recorder() {
    world_.mac().mainThread.onTurn = std::move(nextOnTurn_);
}

std::vector<Happening> Recorder::take() {
    look();
    return std::exchange(happened_, {});
}

void Recorder::look() {
    const auto now = world_.mac().mainThread.now();
    const Log& log = world_.log();
    for (const std::string_view line : log.newest(log.count() - std::exchange(written_, log.count()))) {
        happened_.push_back(parsed(line, now));
    }
    const bool isNoteOpen = world_.mac().surfaces.surface(Surfaces::Kind::note).isOpen();
    if (std::exchange(wasNoteOpen_, isNoteOpen) != isNoteOpen) {
        happened_.push_back(
            {.kind = isNoteOpen ? Happening::Kind::noteOpened : Happening::Kind::noteClosed, .at = now});
    }
}

}  // namespace model

Model::Model(World& world) : world_(world), recorder_(world) {
    expected_.own = world.mac().workspace.bundleID(world.mac().processes.ownPID()).value_or("");
}

std::optional<std::string> Model::check(const script::Step& done) {
    model::StepCheck stepCheck{.world = world_, .expected = expected_, .step = done, .begun = checkedAt_};
    stepCheck.meaningAtFirst = model::meaningOfClick(stepCheck);
    const auto happened = recorder_.take();
    for (const model::Happening& each : happened) {
        model::expire(stepCheck, each.at);
        if (each.kind == model::Happening::Kind::line) {
            model::follow(stepCheck, each);
        } else {
            model::noteTurned(stepCheck, each);
        }
    }
    model::expire(stepCheck, stepCheck.now());
    model::checkStep(stepCheck, happened);
    if (done.verb != script::Verb::wait) {
        touchedAt_ = stepCheck.now();
    }
    if (world_.velko() != nullptr) {
        model::checkDeadlines(stepCheck, touchedAt_);
        model::compare(stepCheck);
    }
    expected_.isMenuOpen = world_.mac().statusItem.menu() != nullptr;
    checkedAt_ = stepCheck.now();
    if (world_.mac().session.isAttended()) {
        expected_.attendedAt = stepCheck.now();
    }
    return stepCheck.breach;
}

}  // namespace velko::scenarios
