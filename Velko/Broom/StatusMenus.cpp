#include "Velko/Broom/StatusMenus.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/AppMenu.h"
#include "Velko/App/Health.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/Presenting.h"
#include "Velko/Flows/Questions.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

namespace velko::StatusMenus {

namespace {

using view::Menu;
using view::MenuItem;
using Actions = std::weak_ptr<MenuActions>;

template <class Action>
std::function<void()> doing(const Actions& actions, Action action) {
    return [actions, action] {
        if (const auto alive = actions.lock()) {
            std::invoke(action, *alive);
        }
    };
}

void addProblem(Menu& menu, Health::Kind problem, const Actions& actions) {
    if (problem == Health::Kind::ok) {
        return;
    }
    menu.push_back(MenuItem::notice(std::string(describe(problem))));
    if (problem == Health::Kind::needsAccessibility) {
        menu.push_back(
            {.title = openPermissionTitle, .action = doing(actions, &MenuActions::openAccessibility)});
    } else if (problem == Health::Kind::layoutUnreadable) {
        menu.push_back({.title = "Edit Layout File…", .action = doing(actions, &MenuActions::editLayout)});
    }
    menu.push_back(MenuItem::separator());
}

void addApps(Menu& menu, const std::vector<PresentApp>& apps, const Actions& actions) {
    for (const PresentApp& app : apps) {
        menu.push_back({.title = app.name, .appIcon = app.bundleID, .action = [actions, id = app.bundleID] {
                            if (const auto alive = actions.lock()) {
                                alive->openApp(id);
                            }
                        }});
    }
}

constexpr const char* openSymbol = "arrow.up.forward.app";

MenuItem closedOpenItem() {
    return {.title = "Open",
            .help = "Hidden icons stay hidden while you are presenting.",
            .symbol = openSymbol,
            .isEnabled = false};
}

MenuItem openItem(const HiddenApps& hidden, bool offersSearch, const Actions& actions) {
    const bool hasGroups = !hidden.tucked.empty() && !hidden.buried.empty();
    Menu submenu;
    if (hasGroups) {
        submenu.push_back(MenuItem::header("Tucked"));
    }
    addApps(submenu, hidden.tucked, actions);
    if (hasGroups) {
        submenu.push_back(MenuItem::header("Buried"));
    }
    addApps(submenu, hidden.buried, actions);
    if (offersSearch) {
        if (!submenu.empty()) {
            submenu.push_back(MenuItem::separator());
        }
        submenu.push_back({.title = "Search…",
                           .symbol = "magnifyingglass",
                           .action = doing(actions, &MenuActions::openSearch)});
    }
    const bool isEnabled = !submenu.empty();
    return {.title = "Open",
            .help = isEnabled ? "" : "No app in the menu bar is tucked or buried.",
            .symbol = openSymbol,
            .isEnabled = isEnabled,
            .submenu = std::move(submenu)};
}

void addQuestions(Menu& menu, AppController& controller, const Actions& actions) {
    const std::size_t newIcons = controller.values().layout.inbox.size();
    const std::size_t suggestions = controller.autopilot().suggestions().size();
    if (newIcons > 0) {
        menu.push_back({.title = newIcons == 1 ? "1 New Icon" : std::to_string(newIcons) + " New Icons",
                        .symbol = "sparkles",
                        .action = doing(actions, &MenuActions::showNoteFromMenu)});
    }
    if (suggestions > 0) {
        menu.push_back({.title = "Tidy Suggestions (" + std::to_string(suggestions) + ")",
                        .symbol = "wand.and.sparkles",
                        .action = doing(actions, &MenuActions::showNoteFromMenu)});
    }
}

}  // namespace

Menu mainMenu(const FaceParts& parts, const std::weak_ptr<MenuActions>& actions) {
    AppController& controller = parts.controller;
    Menu menu;
    addProblem(menu, controller.values().health().kind, actions);
    if (!controller.info().isInApplications()) {
        menu.push_back(MenuItem::notice(wrongPlaceInWords));
        menu.push_back(MenuItem::separator());
    }
    const bool isPresenting = controller.values().isPresenting();
    menu.push_back(isPresenting
                       ? closedOpenItem()
                       : openItem(hiddenApps(controller), controller.values().layout.searchInMenu, actions));
    if (controller.values().layout.offersPresenting) {
        menu.push_back({.title = "Presenting",
                        .symbol = "play.rectangle",
                        .isEnabled = isPresenting || controller.values().health().isOk(),
                        .isChecked = isPresenting,
                        .action = doing(actions, &MenuActions::togglePresenting)});
    }
    if (!isPresenting) {
        addQuestions(menu, controller, actions);
    }
    menu.push_back(MenuItem::separator());
    menu.push_back(
        {.title = "Settings…", .symbol = "gearshape", .action = doing(actions, &MenuActions::openSettings)});
    const auto noUpdates = Updates(parts.ports).whyUnavailable();
    menu.push_back({.title = "Check for Updates…",
                    .help = noUpdates.value_or(""),
                    .symbol = "arrow.down.circle",
                    .isEnabled = !noUpdates,
                    .action = doing(actions, &MenuActions::checkForUpdates)});
    menu.push_back({.title = "Quit Velko", .symbol = "power", .action = doing(actions, &MenuActions::quit)});
    return menu;
}

Menu debugMenu(const FaceParts& parts, const std::weak_ptr<MenuActions>& actions) {
    const AppController& controller = parts.controller;
    const auto entry = [&](std::string title, void (MenuActions::*action)()) {
        return MenuItem{.title = std::move(title), .action = doing(actions, action)};
    };
    return {MenuItem::notice("Debug"),
            MenuItem::notice("State: " + describe(controller.values().state)),
            MenuItem::notice("Plan: " + describe(controller.engine().current())),
            MenuItem::separator(),
            entry("Dump Inventory to Log", &MenuActions::dumpInventory),
            entry("Show All", &MenuActions::showAll),
            entry("Log Current Allowlist", &MenuActions::logAllowlist),
            entry("Log Engine Probe", &MenuActions::logProbe),
            entry("Log App Health and Autopilot", &MenuActions::logUsage),
            entry(controller.isIconWatchRunning() ? "Stop Icon Watch (Pop-up Test)"
                                                  : "Start Icon Watch (Pop-up Test)",
                  &MenuActions::toggleIconWatch),
            MenuItem::separator(),
            entry("Edit Layout File…", &MenuActions::editLayout),
            entry("Reload Layout", &MenuActions::reloadLayout),
            MenuItem::separator(),
            entry("Copy Log", &MenuActions::copyLog),
            entry("Open Log File", &MenuActions::openLog)};
}

}  // namespace velko::StatusMenus
