#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/FaceParts.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "Velko/Settings/ListedApps.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Layout/Switches.h"

namespace velko::SettingsPages {

namespace {

constexpr double listHeight = 264;
constexpr std::array sectionNames{"Bar", "Tucked", "Buried"};

using Presence = ListedApp::Presence;

// A line of the list

/// What there is to say about an app besides its name; nothing if there is nothing.
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

/// Symbols for what is special about an app.
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
                // An app that waits for an answer may also stay where it is: that is an answer too.
                .selected = app.isWaiting ? view::Picker::nothing : static_cast<std::size_t>(app.section),
                .style = view::Picker::Style::segmented,
                .choose = [&controller, bundleID = app.bundleID](std::size_t index) {
                    controller.place(bundleID, allSections.at(index));
                }}};
}

/// Why Velko can't show the user where an app's icon is; empty when it can.
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

view::Node appRow(const FaceParts& parts, const ListedApp& app) {
    AppController& controller = parts.controller;
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

// The list

view::Node filterPicker(const ListedApps& apps, const Filter& filter) {
    const auto all = std::accumulate(apps.counts.begin(), apps.counts.end(), std::size_t{0});
    std::vector<std::string> options{"All " + std::to_string(all)};
    for (const Section section : allSections) {
        options.push_back(std::string(sectionNames.at(static_cast<std::size_t>(section))) + " " +
                          std::to_string(apps.count(section)));
    }
    return {.id = "filter",
            .label = "Which apps are listed",
            .content =
                view::Picker{.options = std::move(options),
                             .selected = filter.section ? static_cast<std::size_t>(*filter.section) + 1 : 0,
                             .style = view::Picker::Style::segmented,
                             .choose = [choose = filter.choose](std::size_t index) {
                                 choose(index == 0 ? std::nullopt : std::optional(allSections.at(index - 1)));
                             }}};
}

std::string whyNoneIsListed(const AppValues& values, const std::optional<Section>& section) {
    if (!section) {
        return whyNoApps(values);
    }
    switch (*section) {
        case Section::bar: return "No app is meant to stay in the bar.";
        case Section::tucked: return "No app is tucked.";
        case Section::buried: break;
    }
    return "No app is buried.";
}

view::Node appList(const FaceParts& parts, const ListedApps& listed, const std::optional<Section>& section) {
    std::vector<view::Node> rows;
    rows.reserve(listed.apps.size() + 1);
    for (const ListedApp& app : listed.apps) {
        rows.push_back(appRow(parts, app));
    }
    if (listed.atRestLeftOut > 0) {
        rows.push_back(view::explanation(
            "apps:more", "And " + std::to_string(listed.atRestLeftOut) + " more that aren't running."));
    }
    if (rows.empty()) {
        rows.push_back(view::text("apps:empty", whyNoneIsListed(parts.controller.values(), section)));
    }
    return {.id = "apps",
            .label = "Apps",
            .content = view::Scroll{.height = listHeight, .children = std::move(rows)}};
}

// New icons

std::string whereNewIconsWait(const Layout& layout) {
    if (!layout.askAboutNewIcons) {
        return "New icons go where apps go that you haven't sorted.";
    }
    return layout.leaveNewIconsOut ? "New icons stay in the bar until you answer."
                                   : "New icons wait tucked until you answer.";
}

view::Node newIcons(AppController& controller) {
    Preferences& preferences = controller.preferences();
    const Layout& layout = controller.values().layout;
    view::Node ask{.id = std::string(Switches::row(Switch::askAboutNewIcons).name),
                   .content = view::Toggle{.title = "Ask where new icons go",
                                           .isOn = layout.askAboutNewIcons,
                                           .change = [&preferences](bool on) {
                                               preferences.setSwitch(Switch::askAboutNewIcons, on);
                                           }}};
    view::Node leaveOut{.id = std::string(Switches::row(Switch::leaveNewIconsOut).name),
                        .isEnabled = layout.askAboutNewIcons,
                        .content = view::Toggle{.title = "Leave them out until I answer",
                                                .isOn = layout.leaveNewIconsOut,
                                                .change = [&preferences](bool on) {
                                                    preferences.setSwitch(Switch::leaveNewIconsOut, on);
                                                }}};
    view::Node picker{.id = "new-icons",
                      .content = view::Picker{.title = "Apps that you haven't sorted go to",
                                              .options = {sectionNames.begin(), sectionNames.end()},
                                              .selected = static_cast<std::size_t>(layout.newIconDefault),
                                              .choose = [&preferences](std::size_t index) {
                                                  preferences.setNewIconDefault(allSections.at(index));
                                              }}};
    return {.id = "newcomers",
            .content = view::Group{.title = "New icons",
                                   .children = {explained(std::move(ask), whereNewIconsWait(layout)),
                                                std::move(leaveOut), std::move(picker)}}};
}

// Another Mac

view::Node transfer(AppController& controller) {
    const bool isUnreadable = controller.values().problems.layoutUnreadable.has_value();
    view::Node exporting = view::button(
        "export", {.title = "Export…", .press = [&controller] { controller.transfer().exportLayout(); }});
    exporting.isEnabled = !isUnreadable;
    exporting.help = isUnreadable ? "There is no layout to export until the file can be read." : "";
    return {
        .id = "transfer",
        .content = view::Group{
            .title = "Take your layout to another Mac",
            .children = {view::explanation("transfer:what",
                                           "Export where every app lives, then import it on your other Mac. "
                                           "Your click history stays here."),
                         view::row("transfer:buttons",
                                   {std::move(exporting),
                                    view::button("import", {.title = "Import…", .press = [&controller] {
                                                                controller.transfer().importLayout();
                                                            }})})}}};
}

/// Shown in place of all controls that would write the file, and so replace it.
view::Node locked() {
    return view::text("apps:locked",
                      "Where each app goes is written in your layout file. Until it can be read, there is "
                      "nothing to show here, and nothing to change.");
}

}  // namespace

view::Node explained(view::Node control, std::string what) {
    if (what.empty()) {
        return control;
    }
    const std::string id = control.id;
    return view::column(id + ":explained",
                        {std::move(control), view::explanation(id + ":what", std::move(what))}, 0);
}

view::Node menuBar(const FaceParts& parts, const Filter& filter) {
    AppController& controller = parts.controller;
    std::vector<view::Node> children;
    if (controller.values().problems.layoutUnreadable) {
        children.push_back(locked());
    } else {
        const ListedApps apps = listedApps(controller, parts.platform.workspace, filter.section);
        const bool isSetUp = controller.values().layout.hasCompletedSetup;
        children.push_back(view::row(
            "sorting", {filterPicker(apps, filter), view::spacer("sorting:gap"),
                        view::button("sort-again", {.title = isSetUp ? "Sort Again…" : "Finish Setup…",
                                                    .press = [&host = parts.host] { host.onResort(); }})}));
        children.push_back(appList(parts, apps, filter.section));
        children.push_back(newIcons(controller));
    }
    children.push_back(transfer(controller));
    return view::column("page:menu-bar", std::move(children), 14);
}

}  // namespace velko::SettingsPages
