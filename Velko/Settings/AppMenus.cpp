#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/FaceParts.h"
#include "Velko/Apps/ManagedWords.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "Velko/Settings/AppRow.h"
#include "VelkoCore/Layout/Section.h"

namespace velko::AppRow {

namespace {

using Presence = ListedApp::Presence;

/// Why Velko can't show the user where an app's icon is; empty when it can.
std::string whyNotShown(const AppValues& values, const ListedApp& app) {
    switch (app.presence) {
        case Presence::notRunning: return inSentence(app.name) + " isn't running.";
        case Presence::runningWithoutIcon: return inSentence(app.name) + " has no icon right now.";
        case Presence::inMenuBar:
        case Presence::unknown: break;
    }
    return values.health().isOk() ? "" : "Velko hides nothing right now.";
}

view::MenuItem showItem(const FaceParts& parts, const ListedApp& app) {
    const AppValues& values = parts.controller.values();
    const bool isShown = values.showingMe == app.bundleID;
    const std::string whyNot = isShown ? "" : whyNotShown(values, app);
    return {.title = isShown ? "Stop Showing" : "Show Me",
            .help = whyNot,
            .isEnabled = whyNot.empty(),
            .action = [&parts, app] { showOrStop(parts, app); }};
}

/// An item that the user can't choose where the organisation has decided.
view::MenuItem managed(view::MenuItem item, bool isManaged) {
    if (isManaged) {
        item.isEnabled = false;
        item.help = managedInWords;
    }
    return item;
}

view::MenuItem forgetItem(AppController& controller, std::string title, BundleIDs apps) {
    const bool isPossible = !apps.empty();
    return {.title = std::move(title),
            .help = isPossible ? "" : "Only apps that aren't running can be forgotten.",
            .isEnabled = isPossible,
            .action = [&controller, apps = std::move(apps)] { controller.forget(apps); }};
}

view::Menu places(AppController& controller, const std::vector<ListedApp>& apps) {
    BundleIDs ids;
    for (const ListedApp& app : apps) {
        ids.insert(app.bundleID);
    }
    view::Menu menu;
    for (const Section section : allSections) {
        const bool isThere = std::ranges::all_of(
            apps, [&](const ListedApp& app) { return app.section == section && !app.isWaiting; });
        menu.push_back(managed({.title = titleOf(section),
                                .isChecked = isThere,
                                .action = [&controller, ids, section] { controller.place(ids, section); }},
                               std::ranges::all_of(apps, &ListedApp::isManaged)));
    }
    menu.push_back(view::MenuItem::separator());
    return menu;
}

}  // namespace

void showOrStop(const FaceParts& parts, const ListedApp& app) {
    AppController& controller = parts.controller;
    if (controller.values().showingMe == app.bundleID) {
        controller.showMe().stop();
    } else if (whyNotShown(controller.values(), app).empty()) {
        controller.showMe().start(app.bundleID);
    }
}

view::Menu moreMenu(const FaceParts& parts, const ListedApp& app) {
    AppController& controller = parts.controller;
    const BundleID bundleID = app.bundleID;
    const bool runs = app.presence != Presence::notRunning;
    view::MenuItem keep{.title = "Always Keep Here",
                        .isChecked = app.isKept,
                        .action = [&controller, bundleID, keep = !app.isKept] {
                            controller.preferences().setAlwaysKeep(bundleID, keep);
                        }};
    view::MenuItem popOut{.title = "Show When It Changes",
                          .help = controller.values().layout.popOutOnChange
                                      ? ""
                                      : "No icon shows when it changes: the switch for that is off.",
                          .isEnabled = controller.values().layout.popOutOnChange,
                          .isChecked = app.popsOut && !app.isQuiet,
                          .action = [&controller, bundleID, pops = !app.popsOut || app.isQuiet] {
                              controller.preferences().setPopsOut(bundleID, pops);
                          }};
    view::MenuItem quit{.title = "Quit " + inSentence(app.name),
                        .help = runs ? "" : inSentence(app.name) + " isn't running.",
                        .isEnabled = runs,
                        .action = [&controller, bundleID] { controller.autopilot().askToQuit(bundleID); }};
    const ManagedLayout& theirs = controller.values().managed;
    return {showItem(parts, app),
            managed(std::move(keep), theirs.keeps(bundleID)),
            view::MenuItem::separator(),
            std::move(quit),
            managed(forgetItem(controller, "Forget " + inSentence(app.name),
                               app.canBeForgotten() ? BundleIDs{bundleID} : BundleIDs()),
                    app.isManaged),
            view::MenuItem::separator(),
            managed(std::move(popOut), theirs.neverPopOut.contains(bundleID))};
}

view::Menu contextMenu(const FaceParts& parts, const std::vector<ListedApp>& apps) {
    if (apps.empty()) {
        return {};
    }
    view::Menu menu = places(parts.controller, apps);
    if (apps.size() == 1) {
        std::ranges::move(moreMenu(parts, apps.front()), std::back_inserter(menu));
        return menu;
    }
    BundleIDs gone;
    for (const ListedApp& app : apps) {
        if (app.canBeForgotten()) {
            gone.insert(app.bundleID);
        }
    }
    const std::string count = gone.empty() ? "" : std::to_string(gone.size()) + " ";
    menu.push_back(forgetItem(
        parts.controller,
        gone.size() == 1 ? "Forget the One That Isn't Running" : "Forget " + count + "That Aren't Running",
        std::move(gone)));
    return menu;
}

}  // namespace velko::AppRow
