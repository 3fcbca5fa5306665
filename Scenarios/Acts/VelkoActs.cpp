#include <algorithm>
#include <array>
#include <filesystem>

#include "Scenarios/Acts/Acts.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "VelkoCore/Layout/Switches.h"

namespace velko::script {

namespace {

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
    {Verb::setNotchedStyle,
     [](const Step& step, AppController& velko, const BundleID&) -> Done {
         return setReveal(velko, [&](auto& reveal) { reveal.notchedStyle = styleOf(step); });
     }},
    {Verb::setOtherStyle,
     [](const Step& step, AppController& velko, const BundleID&) -> Done {
         return setReveal(velko, [&](auto& reveal) { reveal.otherStyle = styleOf(step); });
     }},
});

}  // namespace

std::span<const VelkoAct> velkoActs() {
    return velkoTable;
}

std::span<const VelkoAct> settingActs() {
    return settingTable;
}

}  // namespace velko::script
