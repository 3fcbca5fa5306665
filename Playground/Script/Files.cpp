#include "Playground/Script/Files.h"

#include <filesystem>
#include <optional>

#include "Playground/Neighbourhood.h"
#include "VelkoCore/AtomicFile.h"
#include "VelkoCore/LayoutStore.h"

namespace velko::script {

namespace {

using playground::Stage;

template <class Edit>
Done editFile(const Stage& stage, Edit edit) {
    const LayoutStore store(stage.layoutFile());
    const auto loaded = store.load();
    Layout layout = loaded ? loaded->value_or(Layout()) : Layout();
    edit(layout);
    const auto saved = store.save(layout);
    return saved ? Done() : std::unexpected(saved.error().description);
}

std::optional<std::filesystem::path> fileOf(const Step& step, const Stage& stage) {
    return step.text ? std::optional(stage.documents() / *step.text) : std::nullopt;
}

}  // namespace

Done placeInFile(const Step& step, Stage& stage) {
    const auto app = appOf(step);
    return editFile(
        stage, [&](Layout& layout) { layout.place(app, sectionNamed(step.word).value_or(Section::bar)); });
}

Done spoilFile(const Step&, Stage& stage) {
    const auto written = AtomicFile::replace(stage.layoutFile(), "{ \"version\": ");
    return written ? Done() : std::unexpected(written.error().description);
}

Done exportLayout(const Step& step, Stage& stage) {
    if (stage.velko() == nullptr) {
        return std::unexpected("Velko does not run.");
    }
    stage.velko()->transfer().exportLayout();
    stage.mac().dialogs.choose(fileOf(step, stage));
    return {};
}

Done importLayout(const Step& step, Stage& stage) {
    if (stage.velko() == nullptr) {
        return std::unexpected("Velko does not run.");
    }
    stage.velko()->transfer().importLayout();
    stage.mac().dialogs.choose(fileOf(step, stage));
    return {};
}

}  // namespace velko::script
