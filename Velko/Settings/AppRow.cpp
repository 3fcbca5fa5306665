#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Build.h"
#include "VelkoCore/Layout/Section.h"

namespace velko::SettingsPages {

namespace {

using Presence = ListedApp::Presence;

/// What there is to say about an app besides its name, if anything.
std::optional<view::Node> usageLine(const ListedApp& app) {
    const std::string id = "usage:" + app.bundleID;
    if (app.isWaiting) {
        return view::explanation(id, "New here. Where does it go?");
    }
    switch (app.presence) {
        case Presence::notRunning: return view::explanation(id, "not running");
        case Presence::runningWithoutIcon: return view::explanation(id, "running, without an icon right now");
        case Presence::inMenuBar:
        case Presence::unknown: break;
    }
    if (!app.usage) {
        return std::nullopt;
    }
    view::Node line = view::explanation(id, describe(*app.usage));
    line.help = AppHealth::usageHelp(*app.usage);
    return line;
}

/// The symbols for what stands out about an app.
std::vector<view::Node> marks(const AppController& controller, const ListedApp& app) {
    std::vector<view::Node> result;
    const auto add = [&](const char* kind, std::string label, std::string help, const char* symbol,
                         view::Ink ink) {
        result.push_back({.id = std::string(kind) + ":" + app.bundleID,
                          .label = std::move(label),
                          .help = std::move(help),
                          .content = view::Symbol{.name = symbol, .ink = ink}});
    };
    if (controller.values().showingMe == app.bundleID) {
        add("shown", app.name + " is being shown", "Only this icon shows for a moment", "eye",
            view::Ink::accent);
    }
    if (app.usage && AppHealth::isHeavy(*app.usage)) {
        add("heavy", app.name + " uses a lot", std::string(AppHealth::usageHelp(*app.usage)),
            "exclamationmark.triangle", view::Ink::warning);
    }
    if (app.isKept) {
        add("kept", app.name + " is always kept here", "Autopilot won't suggest moving this app", "pin",
            view::Ink::label);
    }
    return result;
}

view::Node sectionPicker(AppController& controller, const ListedApp& app) {
    return {.id = "section:" + app.bundleID,
            .label = "Where " + app.name + " goes",
            .content = view::Picker{
                .options = {"Bar", "Tucked", "Buried"},
                // For one that waits, to stay where it is is an answer too.
                .selected = app.isWaiting ? view::Picker::nothing : static_cast<std::size_t>(app.section),
                .style = view::Picker::Style::segmented,
                .choose = [&controller, bundleID = app.bundleID](std::size_t index) {
                    controller.place(bundleID, allSections.at(index));
                }}};
}

/// Why an app's icon can't be shown to the user; empty when it can.
std::string whyNotShown(const AppValues& values, const ListedApp& app) {
    switch (app.presence) {
        case Presence::notRunning: return app.name + " isn't running.";
        case Presence::runningWithoutIcon: return app.name + " has no icon right now.";
        case Presence::inMenuBar:
        case Presence::unknown: break;
    }
    return values.health().isOk() ? "" : "Velko hides nothing right now.";
}

view::Menu moreMenu(AppController& controller, const ListedApp& app) {
    const BundleID bundleID = app.bundleID;
    const bool isShown = controller.values().showingMe == bundleID;
    const std::string whyNot = isShown ? "" : whyNotShown(controller.values(), app);
    const bool runs = app.presence != Presence::notRunning;
    view::MenuItem showMe{.title = isShown ? "Stop Showing" : "Show Me",
                          .help = whyNot,
                          .isEnabled = whyNot.empty(),
                          .action = [&controller, bundleID, isShown] {
                              if (isShown) {
                                  controller.showMe().stop();
                              } else {
                                  controller.showMe().start(bundleID);
                              }
                          }};
    view::MenuItem keep{.title = "Always Keep Here",
                        .isChecked = app.isKept,
                        .action = [&controller, bundleID, keep = !app.isKept] {
                            controller.preferences().setAlwaysKeep(bundleID, keep);
                        }};
    view::MenuItem quit{.title = "Quit " + app.name,
                        .help = runs ? "" : app.name + " isn't running.",
                        .isEnabled = runs,
                        .action = [&controller, bundleID] { controller.autopilot().askToQuit(bundleID); }};
    return {std::move(showMe), std::move(keep), view::MenuItem::separator(), std::move(quit)};
}

}  // namespace

view::Node appRow(AppController& controller, const ListedApp& app) {
    view::Node appName{
        .id = "name:" + app.bundleID,
        .content = view::Text{.text = app.name, .isSecondary = app.presence == Presence::notRunning}};
    std::vector<view::Node> words{std::move(appName)};
    if (auto line = usageLine(app)) {
        words.push_back(*std::move(line));
    }
    std::vector<view::Node> children{
        {.id = "icon:" + app.bundleID, .content = view::AppIcon{.bundleID = app.bundleID, .points = 24}},
        view::column("words:" + app.bundleID, std::move(words), 2),
        view::spacer("gap:" + app.bundleID)};
    std::ranges::move(marks(controller, app), std::back_inserter(children));
    children.push_back(sectionPicker(controller, app));
    children.push_back({.id = "more:" + app.bundleID,
                        .label = "More for " + app.name,
                        .content = view::MenuButton{.title = "•••", .menu = [&controller, app] {
                                                        return moreMenu(controller, app);
                                                    }}});
    return view::row("app:" + app.bundleID, std::move(children));
}

}  // namespace velko::SettingsPages
