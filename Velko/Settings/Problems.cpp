#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/AppController.h"
#include "Velko/Broom/MenuActions.h"
#include "Velko/Ports/Updater.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Build.h"
#include "VelkoEngine/AX.h"

namespace velko::SettingsPages {

namespace {

view::Node problem(const std::string& id, std::string what, std::string more,
                   std::vector<view::Node> remedies) {
    view::Node mark{
        .id = id + ":mark",
        .content = view::Symbol{.name = "exclamationmark.triangle", .points = 18, .ink = view::Ink::warning}};
    std::vector<view::Node> words{view::text(id + ":what", std::move(what), view::Text::Style::headline),
                                  view::explanation(id + ":more", std::move(more))};
    if (!remedies.empty()) {
        words.push_back(view::row(id + ":remedies", std::move(remedies)));
    }
    return {.id = id,
            .content = view::Group{
                .children = {view::row(
                    id + ":row", {std::move(mark), view::column(id + ":words", std::move(words), 6)})}}};
}

view::Node unsupported(const FaceParts& parts, MenuActions& actions) {
    std::vector<view::Node> remedies;
    if (!parts.ports.updater.whyUnavailable()) {
        remedies.push_back(view::button(
            "problem:engine:updates",
            {.title = "Check for Updates…", .press = [&actions] { actions.checkForUpdates(); }}));
    }
    return problem("problem:engine", "Not supported on this macOS build. Nothing is hidden.",
                   "A newer Velko may know this build.", std::move(remedies));
}

view::Node unreadable(AppController& controller, const std::string& reason, MenuActions& actions) {
    return problem("problem:layout", "Your layout file can't be read. Nothing is hidden.", reason,
                   {view::button("problem:layout:edit", {.title = "Edit Layout File…",
                                                         .press = [&actions] { actions.editLayout(); }}),
                    view::button("problem:layout:again",
                                 {.title = "Try Again", .press = [&actions] { actions.reloadLayout(); }}),
                    view::button("problem:layout:import", {.title = "Import…", .press = [&controller] {
                                                               controller.transfer().importLayout();
                                                           }})});
}

view::Node untrusted(const Platform& platform, MenuActions& actions) {
    return problem(
        "problem:trust", "Velko needs permission to tidy your menu bar.",
        "Switch Velko on in the list. It notices by itself.",
        {view::button("problem:trust:open", {.title = "Open Device Control and Data Access…",
                                             .style = view::Button::Style::primary,
                                             .press = [platform, &actions] {
                                                 AX::promptForTrust(platform);  // puts Velko on the list
                                                 actions.openAccessibility();
                                             }})});
}

}  // namespace

std::vector<view::Node> problems(const FaceParts& parts, MenuActions& actions) {
    AppController& controller = parts.controller;
    const HealthFacts& facts = controller.values().problems;
    std::vector<view::Node> result;
    if (facts.engineUnavailable) {
        result.push_back(unsupported(parts, actions));
    }
    if (facts.layoutUnreadable) {
        result.push_back(unreadable(controller, *facts.layoutUnreadable, actions));
    }
    if (facts.trustMissing) {
        result.push_back(untrusted(parts.platform, actions));
    }
    if (!controller.info().bundlePath.starts_with("/Applications/")) {
        result.push_back(problem("problem:place", "Move Velko to Applications so its icon stays visible.",
                                 "It runs from " + controller.info().bundlePath + ".", {}));
    }
    return result;
}

}  // namespace velko::SettingsPages
