#include <array>
#include <cstddef>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/Apps/EmptyList.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Build.h"
#include "VelkoCore/Layout/Switches.h"

namespace velko::SettingsPages {

namespace {

constexpr double listHeight = 264;
constexpr std::array sectionNames{"Bar", "Tucked", "Buried"};

// The apps

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

view::Node appList(AppController& controller, const ListedApps& listed,
                   const std::optional<Section>& section) {
    std::vector<view::Node> rows;
    rows.reserve(listed.apps.size() + 1);
    for (const ListedApp& app : listed.apps) {
        rows.push_back(appRow(controller, app));
    }
    if (listed.atRestLeftOut > 0) {
        rows.push_back(view::explanation(
            "apps:more", "And " + std::to_string(listed.atRestLeftOut) + " more that aren't running."));
    }
    if (rows.empty()) {
        rows.push_back(view::text("apps:empty", whyNoneIsListed(controller.values(), section)));
    }
    return {.id = "apps",
            .label = "Apps",
            .content = view::Scroll{.height = listHeight, .children = std::move(rows)}};
}

// New icons

view::Node newIcons(AppController& controller) {
    Preferences& preferences = controller.preferences();
    const Layout& layout = controller.values().layout;
    view::Node ask{.id = std::string(Switches::row(Switch::askAboutNewIcons).name),
                   .content = view::Toggle{.title = "Ask where new icons go",
                                           .isOn = layout.askAboutNewIcons,
                                           .change = [&preferences](bool on) {
                                               preferences.setSwitch(Switch::askAboutNewIcons, on);
                                           }}};
    view::Node picker{.id = "new-icons",
                      .content = view::Picker{.title = "Apps that you haven't sorted go to",
                                              .options = {sectionNames.begin(), sectionNames.end()},
                                              .selected = static_cast<std::size_t>(layout.newIconDefault),
                                              .choose = [&preferences](std::size_t index) {
                                                  preferences.setNewIconDefault(allSections.at(index));
                                              }}};
    return {.id = "newcomers",
            .content = view::Group{
                .title = "New icons",
                .children = {explained(std::move(ask), layout.askAboutNewIcons
                                                           ? "New icons wait tucked until you answer."
                                                           : "New icons go where apps go that you haven't "
                                                             "sorted."),
                             std::move(picker)}}};
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

/// Instead of everything that would be written into the file and so replace it.
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

view::Node menuBar(const FaceParts& parts, const Filter& filter, const Actions& actions) {
    AppController& controller = parts.controller;
    std::vector<view::Node> children;
    if (controller.values().problems.layoutUnreadable) {
        children.push_back(locked());
    } else {
        const ListedApps apps = listedApps(controller, parts.platform.workspace, filter.section);
        children.push_back(view::row(
            "sorting", {filterPicker(apps, filter), view::spacer("sorting:gap"),
                        view::button("sort-again", {.title = "Sort Again…", .press = actions.sortAgain})}));
        children.push_back(appList(controller, apps, filter.section));
        children.push_back(newIcons(controller));
    }
    children.push_back(transfer(controller));
    return view::column("page:menu-bar", std::move(children), 14);
}

}  // namespace velko::SettingsPages
