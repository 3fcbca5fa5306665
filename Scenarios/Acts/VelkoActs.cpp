#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Velko/App/AppController.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Presenting.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Files/Json.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/Layout/Switches.h"

namespace velko::script {

namespace {

using scenarios::World;

std::optional<TidySuggestion> suggestionFor(AppController& velko, const BundleID& app) {
    const auto suggestions = velko.autopilot().suggestions();
    const auto found = std::ranges::find(suggestions, app, &TidySuggestion::bundleID);
    return found == suggestions.end() ? std::nullopt : std::optional(*found);
}

Done accept(const Step& step, AppController& velko, const BundleID& app) {
    const auto suggestion = suggestionFor(velko, app);
    if (!suggestion) {
        return std::unexpected("Velko suggests nothing for " + step.app + ".");
    }
    velko.autopilot().accept(*suggestion);
    return {};
}

/// An act that always works.
template <void (*act)(AppController&, const BundleID&)>
Done does(const Step&, AppController& velko, const BundleID& app) {
    act(velko, app);
    return {};
}

constexpr auto velkoTable = std::to_array<VelkoAct>({
    {Verb::place,
     [](const Step& step, AppController& velko, const BundleID& app) -> Done {
         velko.place(app, sectionNamed(step.word).value_or(Section::bar));
         return {};
     }},
    {Verb::open, does<[](auto& velko, const auto& app) { velko.open(app); }>},
    {Verb::showMe, does<[](auto& velko, const auto& app) { velko.showMe().start(app); }>},
    {Verb::showAll, does<[](auto& velko, const auto&) { velko.showAll(); }>},
    {Verb::accept, accept},
    {Verb::dismiss, does<[](auto& velko, const auto& app) { velko.autopilot().dismiss(app); }>},
    {Verb::alwaysKeep, does<[](auto& velko, const auto& app) { velko.autopilot().alwaysKeep(app); }>},
    {Verb::forget, does<[](auto& velko, const auto& app) { velko.forget({app}); }>},
    {Verb::undo, does<[](auto& velko, const auto&) { velko.undo(); }>},
    {Verb::redo, does<[](auto& velko, const auto&) { velko.redo(); }>},
    {Verb::finishSetup, does<[](auto& velko, const auto&) { velko.completeSetup({}); }>},
    {Verb::fileReload, does<[](auto& velko, const auto&) { velko.loadLayout(); }>},
});

bool isOn(const Step& step) {
    return step.word == "on";
}

/// Changes one of the reveal settings.
template <class Change>
Done setReveal(AppController& velko, Change change) {
    RevealSettings reveal = velko.values().layout.reveal;
    change(reveal);
    velko.preferences().setReveal(reveal);
    return {};
}

RevealStyle styleOf(const Step& step) {
    return revealStyleNamed(step.word).value_or(RevealStyle::inline_);
}

Done flip(const Step& step, AppController& velko, const BundleID&) {
    const SwitchRow* const row = Switches::named(step.control);
    if (row == nullptr) {
        return std::unexpected("There is no switch called " + step.control + ".");
    }
    velko.preferences().setSwitch(row->which, isOn(step));
    return {};
}

constexpr auto settingTable = std::to_array<VelkoAct>({
    {Verb::setSwitch, flip},
    {Verb::showChanges,
     [](const Step& step, AppController& velko, const BundleID& app) -> Done {
         velko.preferences().setPopsOut(app, isOn(step));
         return {};
     }},
    {Verb::showToAudience,
     [](const Step& step, AppController& velko, const BundleID& app) -> Done {
         velko.presenting().setStays(app, isOn(step));
         return {};
     }},
    {Verb::setLogin,
     [](const Step& step, AppController& velko, const BundleID&) -> Done {
         velko.preferences().setLaunchAtLogin(isOn(step));
         return {};
     }},
    {Verb::setNewIcons,
     [](const Step& step, AppController& velko, const BundleID&) -> Done {
         velko.preferences().setNewIconDefault(sectionNamed(step.word).value_or(Section::bar));
         return {};
     }},
    {Verb::setAutoTuck,
     [](const Step& step, AppController& velko, const BundleID&) -> Done {
         return setReveal(velko, [&](auto& reveal) { reveal.autoTuckSeconds = step.amount.value_or(0); });
     }},
    {Verb::setShowAllFrom,
     [](const Step& step, AppController& velko, const BundleID&) -> Done {
         velko.preferences().setShowAllFromWidth(step.amount);
         return {};
     }},
    {Verb::setNotchedStyle,
     [](const Step& step, AppController& velko, const BundleID&) -> Done {
         return setReveal(velko, [&](auto& reveal) { reveal.notchedStyle = styleOf(step); });
     }},
    {Verb::setOtherStyle,
     [](const Step& step, AppController& velko, const BundleID&) -> Done {
         return setReveal(velko, [&](auto& reveal) { reveal.otherStyle = styleOf(step); });
     }},
});

// Files

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
    // The question comes when the file is read.
    world.mac().platform().mainThread.post([&dialogs = world.mac().dialogs] { dialogs.answer(true); });
    return {};
}

// The file of the organisation

template <class Edit>
Done editManaged(const World& world, const Edit& edit) {
    const auto content = AtomicFile::read(world.managedFile()).value_or(std::nullopt);
    const auto json = Json::parse(content.value_or("{}"));
    Json::Object root;
    if (const auto* const object = json ? std::get_if<Json::Object>(&json->value) : nullptr) {
        root = *object;
    }
    edit(root);
    const auto written = AtomicFile::replace(world.managedFile(), Json{std::move(root)}.print());
    return written ? Done() : std::unexpected(written.error().description);
}

Done placeManaged(const Step& step, World& world) {
    return editManaged(world, [app = appOf(step), &step](Json::Object& root) {
        Json& sections = root["sections"];
        if (sections.isNull()) {
            sections.value = Json::Object();
        }
        std::get<Json::Object>(sections.value)[app] = Json{step.word};
    });
}

Done setManaged(const Step& step, World& world) {
    return editManaged(world, [&](Json::Object& root) { root["popOutOnChange"] = Json{isOn(step)}; });
}

Done spoilManaged(const Step&, World& world) {
    const auto written = AtomicFile::replace(world.managedFile(), "{ \"sections\": ");
    return written ? Done() : std::unexpected(written.error().description);
}

Done removeManaged(const Step&, World& world) {
    std::error_code error;
    std::filesystem::remove(world.managedFile(), error);
    return error ? std::unexpected(error.message()) : Done();
}

constexpr auto fileVerbs = std::to_array<MacAct>({
    {Verb::exportLayout, exportLayout},
    {Verb::importLayout, importLayout},
    {Verb::filePlace, placeInFile},
    {Verb::fileSpoil, spoilFile},
    {Verb::managedPlace, placeManaged},
    {Verb::managedPopOut, setManaged},
    {Verb::managedSpoil, spoilManaged},
    {Verb::managedRemove, removeManaged},
});

}  // namespace

std::span<const VelkoAct> velkoActs() {
    return velkoTable;
}

std::span<const VelkoAct> settingActs() {
    return settingTable;
}

std::span<const MacAct> fileActs() {
    return fileVerbs;
}

}  // namespace velko::script
