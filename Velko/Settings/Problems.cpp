#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/Refusal.h"
#include "Velko/App/Updates.h"
#include "Velko/Broom/MenuActions.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Build.h"

namespace velko::SettingsPages {

namespace {

view::Node problem(const std::string& id, std::string what, std::string more,
                   std::vector<view::Node> remedies) {
    view::Node mark{
        .id = id + ":mark",
        .content = view::Symbol{.name = "exclamationmark.triangle", .points = 18, .ink = view::Ink::warning}};
    std::vector<view::Node> words{view::text(id + ":what", std::move(what), view::Text::Style::headline)};
    if (!more.empty()) {
        words.push_back(view::explanation(id + ":more", std::move(more)));
    }
    if (!remedies.empty()) {
        words.push_back(view::row(id + ":remedies", std::move(remedies)));
    }
    return {.id = id,
            .content = view::Group{
                .children = {
                    {.id = id + ":row",
                     .content = view::Stack{
                         .axis = view::Stack::Axis::row,
                         .children = {std::move(mark), view::column(id + ":words", std::move(words), 6)}}}}}};
}

view::Node unsupported(const FaceParts& parts, MenuActions& actions) {
    std::vector<view::Node> remedies;
    if (!Updates(parts.ports).whyUnavailable()) {
        remedies.push_back(view::button(
            "problem:engine:updates",
            {.title = "Check for Updates…", .press = [&actions] { actions.checkForUpdates(); }}));
    }
    return problem("problem:engine", "Not supported on this macOS build. Nothing is hidden.",
                   "A newer Velko may know this build.", std::move(remedies));
}

view::Node unreadable(AppController& controller, const std::string& reason, const Actions& actions) {
    const auto button = [](const char* what, const char* title, std::function<void()> press) {
        return view::button(std::string("problem:layout:") + what,
                            {.title = title, .press = std::move(press)});
    };
    return problem("problem:layout", "Your layout file can't be read. Nothing is hidden.", reason,
                   {button("edit", "Edit Layout File…", [&menu = actions.menu] { menu.editLayout(); }),
                    button("again", "Try Again", [&menu = actions.menu] { menu.reloadLayout(); }),
                    button("import", "Import…", [&controller] { controller.transfer().importLayout(); }),
                    button("afresh", "Start Afresh…", [&controller, sort = actions.sortAgain] {
                        controller.transfer().offerToStartAfresh(sort);
                    })});
}

view::Node unsaved(AppController& controller, const std::string& reason) {
    return problem("problem:save", "Your latest changes couldn't be saved.", reason,
                   {view::button("problem:save:again",
                                 {.title = "Try Again", .press = [&controller] { controller.saveNow(); }})});
}

view::Node refused(AppController& controller) {
    return problem("problem:refusal", refusalInWords, {},
                   {view::button("problem:refusal:again",
                                 {.title = "Try Again", .press = [&controller] { controller.tryAgain(); }})});
}

view::Node untrusted(const Actions& actions) {
    return problem("problem:trust", "Velko needs permission to tidy your menu bar.",
                   "Switch Velko on in the list. It notices by itself.",
                   {view::button("problem:trust:open", {.title = "Open Device Control and Data Access…",
                                                        .style = view::Button::Style::primary,
                                                        .press = actions.openPermission})});
}

}  // namespace

view::Node iconOutOfSight(const Actions& actions) {
    return problem("problem:icon", "Velko's icon doesn't show in your menu bar.",
                   "There may be no room for it, or it may be switched off in the system's settings.",
                   {view::button("problem:icon:open",
                                 {.title = "Open Menu Bar Settings…",
                                  .press = [&menu = actions.menu] { menu.openMenuBarSettings(); }})});
}

std::vector<view::Node> problems(const FaceParts& parts, const Actions& actions) {
    AppController& controller = parts.controller;
    const AppValues& values = controller.values();
    const HealthFacts& facts = values.problems;
    std::vector<view::Node> result;
    if (facts.engineUnavailable) {
        result.push_back(unsupported(parts, actions.menu));
    }
    if (facts.layoutUnreadable) {
        result.push_back(unreadable(controller, *facts.layoutUnreadable, actions));
    }
    if (values.saveFailure) {
        result.push_back(unsaved(controller, *values.saveFailure));
    }
    if (facts.trustMissing) {
        result.push_back(untrusted(actions));
    }
    if (values.isRefused && values.health().isOk()) {
        result.push_back(refused(controller));
    }
    if (!controller.info().bundlePath.starts_with("/Applications/")) {
        result.push_back(problem("problem:place", "Move Velko to Applications so its icon stays visible.",
                                 "It runs from " + controller.info().bundlePath + ".", {}));
    }
    return result;
}

}  // namespace velko::SettingsPages
