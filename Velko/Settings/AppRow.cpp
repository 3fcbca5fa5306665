#include <string>
#include <utility>
#include <vector>

#include "Velko/AppController.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Build.h"
#include "VelkoCore/Section.h"

namespace velko::SettingsPages {

namespace {

using Presence = ListedApp::Presence;

view::Node usageLine(const ListedApp& app) {
    const std::string id = "usage:" + app.bundleID;
    if (app.isWaiting) {
        return view::explanation(id, "New here. Where does it go?");
    }
    switch (app.presence) {
        case Presence::notRunning: return view::explanation(id, "not running");
        case Presence::runningWithoutIcon: return view::explanation(id, "running, without an icon right now");
        case Presence::inMenuBar: break;
    }
    view::Node line = view::explanation(id, app.usage ? describe(*app.usage) : "not measured yet");
    if (app.usage) {
        line.help = AppHealth::usageHelp(*app.usage);
    }
    return line;
}

view::Node heavyMark(const ListedApp& app, const AppUsage& usage) {
    return {.id = "heavy:" + app.bundleID,
            .label = app.name + " uses a lot",
            .help = std::string(AppHealth::usageHelp(usage)),
            .content = view::Symbol{.name = "exclamationmark.triangle", .ink = view::Ink::warning}};
}

view::Node sectionPicker(AppController& controller, const ListedApp& app) {
    return {.id = "section:" + app.bundleID,
            .label = "Where " + app.name + " goes",
            .content = view::Picker{.options = {"Bar", "Tucked", "Buried"},
                                    .selected = static_cast<std::size_t>(app.section),
                                    .style = view::Picker::Style::segmented,
                                    .choose = [&controller, bundleID = app.bundleID](std::size_t index) {
                                        controller.place(bundleID, allSections.at(index));
                                    }}};
}

view::Menu moreMenu(AppController& controller, const ListedApp& app) {
    const BundleID bundleID = app.bundleID;
    const bool isShown = controller.values().showingMe == bundleID;
    view::MenuItem showMe{.title = isShown ? "Stop Showing" : "Show Me",
                          .isEnabled = app.presence == Presence::inMenuBar,
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
                        .isEnabled = app.presence != Presence::notRunning,
                        .action = [&controller, bundleID] { controller.autopilot().askToQuit(bundleID); }};
    return {std::move(showMe), std::move(keep), view::MenuItem::separator(), std::move(quit)};
}

}  // namespace

view::Node appRow(AppController& controller, const ListedApp& app) {
    view::Node appName{
        .id = "name:" + app.bundleID,
        .content = view::Text{.text = app.name, .isSecondary = app.presence == Presence::notRunning}};
    std::vector<view::Node> children{
        {.id = "icon:" + app.bundleID, .content = view::AppIcon{.bundleID = app.bundleID, .points = 24}},
        view::column("words:" + app.bundleID, {std::move(appName), usageLine(app)}, 2),
        view::spacer("gap:" + app.bundleID)};
    if (app.usage && AppHealth::isHeavy(*app.usage)) {
        children.push_back(heavyMark(app, *app.usage));
    }
    children.push_back(sectionPicker(controller, app));
    children.push_back({.id = "more:" + app.bundleID,
                        .label = "More for " + app.name,
                        .content = view::MenuButton{.title = "•••", .menu = [&controller, app] {
                                                        return moreMenu(controller, app);
                                                    }}});
    return view::row("app:" + app.bundleID, std::move(children));
}

}  // namespace velko::SettingsPages
