#include "Scenarios/Acts/Files.h"

#include <filesystem>
#include <optional>

#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/LayoutStore.h"

namespace velko::script {

namespace {

using scenarios::World;

template <class Edit>
Done editFile(const World& world, Edit edit) {
    const LayoutStore store(world.layoutFile());
    const auto loaded = store.load();
    Layout layout = loaded ? loaded->value_or(Layout()) : Layout();
    edit(layout);
    const auto saved = store.save(layout);
    return saved ? Done() : std::unexpected(saved.error().description);
}

std::optional<std::filesystem::path> fileOf(const Step& step, const World& world) {
    return step.text ? std::optional(world.documents() / *step.text) : std::nullopt;
}

}  // namespace

Done placeInFile(const Step& step, World& world) {
    const auto app = appOf(step);
    return editFile(
        world, [&](Layout& layout) { layout.place(app, sectionNamed(step.word).value_or(Section::bar)); });
}

Done spoilFile(const Step&, World& world) {
    const auto written = AtomicFile::replace(world.layoutFile(), "{ \"version\": ");
    return written ? Done() : std::unexpected(written.error().description);
}

Done exportLayout(const Step& step, World& world) {
    if (world.velko() == nullptr) {
        return std::unexpected("Velko does not run.");
    }
    world.velko()->transfer().exportLayout();
    world.mac().dialogs.choose(fileOf(step, world));
    return {};
}

Done importLayout(const Step& step, World& world) {
    if (world.velko() == nullptr) {
        return std::unexpected("Velko does not run.");
    }
    world.velko()->transfer().importLayout();
    world.mac().dialogs.choose(fileOf(step, world));
    return {};
}

}  // namespace velko::script
