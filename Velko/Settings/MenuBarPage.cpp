#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/FaceParts.h"
#include "Velko/Apps/ManagedWords.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Settings/AppList.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Layout/Switches.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"

namespace velko::SettingsPages {

namespace {

constexpr std::array sectionNames{"Bar", "Tucked", "Buried"};

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
    const ManagedLayout& theirs = controller.values().managed;
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
            .content = view::Group{
                .title = "New icons",
                .children = {explained(managed(std::move(ask), theirs.sets(Switch::askAboutNewIcons)),
                                       whereNewIconsWait(layout)),
                             managed(std::move(leaveOut), theirs.sets(Switch::leaveNewIconsOut)),
                             managed(std::move(picker), theirs.newIconDefault.has_value())}}};
}

// Icons without room

std::string listed(const std::vector<std::string>& names) {
    constexpr std::size_t most = 4;
    std::string words;
    const std::size_t count = std::min(names.size(), most);
    for (std::size_t i = 0; i < count; ++i) {
        words += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + inSentence(names[i]);
    }
    return names.size() > most ? words + " and " + std::to_string(names.size() - most) + " more" : words;
}

/// Who should show and has no room, as last looked; nothing if everybody has.
std::optional<view::Node> withoutRoom(const FaceParts& parts) {
    const AppController& controller = parts.controller;
    std::vector<std::string> names;
    for (const PresentApp& app : presentApps(controller.values())) {
        if (controller.values().withoutPlace.contains(app.bundleID) &&
            !controller.engine().current().hides(app.bundleID)) {
            names.push_back(app.name);
        }
    }
    if (names.empty()) {
        return std::nullopt;
    }
    const auto displays = parts.platform.displays.displays();
    const bool isNotched = std::ranges::any_of(displays, MenuBarStrip::isNotched);
    return view::explanation("no-room", (isNotched ? "The notch hides " : "The bar has no room for ") +
                                            listed(names) +
                                            (isNotched ? ": there is no room beside it." : ".") +
                                            " Tuck or bury icons that you don't need to see.");
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

view::Node managed(view::Node control, bool isManaged) {
    if (!isManaged) {
        return control;
    }
    control.isEnabled = false;
    control.help = managedInWords;
    const std::string id = control.id;
    return view::column(id + ":locked",
                        {std::move(control), view::explanation(id + ":managed", managedInWords)}, 0);
}

view::Node scrolling(std::string id, std::string label, view::Node content) {
    constexpr double higherThanAnyPage = 4000;
    constexpr double leastScroll = 110;
    std::vector<view::Node> children;
    children.push_back(std::move(content));
    return {.id = std::move(id),
            .label = std::move(label),
            .minHeight = leastScroll,
            .content = view::Scroll{.height = higherThanAnyPage, .children = std::move(children)}};
}

view::Node explained(view::Node control, std::string what) {
    if (what.empty()) {
        return control;
    }
    const std::string id = control.id;
    return view::column(id + ":explained",
                        {std::move(control), view::explanation(id + ":what", std::move(what))}, 0);
}

view::Node menuBar(const Context& context) {
    AppController& controller = context.parts.controller;
    std::vector<view::Node> children;
    std::vector<view::Node> below;
    if (controller.values().problems.layoutUnreadable) {
        children.push_back(locked());
    } else {
        if (auto roomless = withoutRoom(context.parts)) {
            children.push_back(*std::move(roomless));  // first: below the list nobody would see it
        }
        std::vector<view::Node> list = context.apps.nodes();
        std::ranges::move(list, std::back_inserter(children));
        below.push_back(newIcons(controller));
    }
    below.push_back(transfer(controller));
    children.push_back(
        scrolling("below", "New icons, and another Mac", view::column("below:all", std::move(below), 14)));
    return view::column("page:menu-bar", std::move(children), 14);
}

}  // namespace velko::SettingsPages
