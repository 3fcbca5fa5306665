#include "Scenarios/Model/Model.h"

#include <utility>

#include "Scenarios/Model/Scene.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"

namespace velko::scenarios {

Model::Model(World& world) : world_(world), trace_(world) {
    belief_.own = world.mac().workspace.bundleID(world.mac().processes.ownPID()).value_or("");
}

std::optional<std::string> Model::check(const script::Step& done) {
    model::Scene scene{.world = world_, .belief = belief_, .step = done, .begun = checkedAt_};
    scene.meaningAtFirst = model::meaningOfClick(scene);
    const auto happened = trace_.take();
    for (const model::Happening& each : happened) {
        model::expire(scene, each.at);
        if (each.kind == model::Happening::Kind::line) {
            model::hear(scene, each);
        } else {
            model::noteTurned(scene, each);
        }
    }
    model::expire(scene, scene.now());
    model::checkStep(scene, happened);
    if (done.verb != script::Verb::wait) {
        touchedAt_ = scene.now();
    }
    if (world_.velko() != nullptr) {
        model::checkDeadlines(scene, touchedAt_);
        model::compare(scene);
    }
    belief_.isMenuOpen = world_.mac().statusItem.menu() != nullptr;
    checkedAt_ = scene.now();
    return scene.breach;
}

}  // namespace velko::scenarios
