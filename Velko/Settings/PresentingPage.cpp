#include "Velko/Settings/PresentingPage.h"

#include <cstdint>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Presenting.h"
#include "Velko/Settings/ListedApps.h"
#include "Velko/Settings/SettingsPages.h"
#include "VelkoCore/Layout/Switches.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

namespace {

// Points
constexpr double stayingListHeight = 240;
constexpr double appFieldWidth = 260;
constexpr double stayingIcon = 18;

std::string lastingInWords(std::int64_t minutes) {
    if (minutes == 0) {
        return "I stop it";
    }
    const bool isWhole = minutes % 60 == 0;
    const std::int64_t count = isWhole ? minutes / 60 : minutes;
    const std::string unit = isWhole ? " hour" : " minute";
    return std::to_string(count) + unit + (count == 1 ? "" : "s") + " have passed";
}

view::Node lastingPicker(AppController& controller) {
    return SettingsPages::numberPicker(
        {.id = "presenting-minutes",
         .title = "It lasts until",
         .offered = {0, 60, 120},
         .now = controller.values().layout.presentingMinutes,
         .inWords = lastingInWords,
         .choose = [&controller](std::int64_t minutes) { controller.presenting().setMinutes(minutes); }});
}

view::Node startButton(AppController& controller) {
    const AppValues& values = controller.values();
    const bool isOn = values.isPresenting();
    view::Node button = view::button("present", {.title = isOn ? "Stop" : "Start", .press = [&controller] {
                                                     controller.presenting().toggle();
                                                 }});
    button.label = isOn ? "Stop presenting" : "Start presenting";
    button.isEnabled = isOn || (values.layout.offersPresenting && values.health().isOk());
    return view::row("present:row",
                     {view::text("present:state", isOn ? "You are presenting." : "You aren't presenting."),
                      view::spacer("present:gap"), std::move(button)});
}

}  // namespace

view::Node PresentingPage::offering(bool isLocked) {
    AppController& controller = parts_.controller;
    const bool isOffered = controller.values().layout.offersPresenting;
    view::Node offers{.id = std::string(Switches::row(Switch::presenting).name),
                      .isEnabled = !isLocked,
                      .content = view::Toggle{.title = "Offer “Presenting” in the broom's menu",
                                              .isOn = isOffered,
                                              .change = [&controller](bool on) {
                                                  controller.preferences().setSwitch(Switch::presenting, on);
                                              }}};
    view::Node lasts = lastingPicker(controller);
    lasts.isEnabled = isOffered && !isLocked;
    return {.id = "offering",
            .content = view::Group{
                .title = "Before an audience",
                .children = {SettingsPages::managed(std::move(offers),
                                                    controller.values().managed.sets(Switch::presenting)),
                             view::explanation(
                                 "offering:what",
                                 "While you present, only Velko, the system's items and the apps that you "
                                 "choose below show. Nothing asks, pops out or comes out. You can give it a "
                                 "key, too, on the page Keys."),
                             std::move(lasts), startButton(controller)}}};
}

std::vector<view::Node> PresentingPage::appRows(bool isLocked) {
    AppController& controller = parts_.controller;
    const BundleIDs& stays = controller.values().layout.shareKeep;
    const BundleIDs none;
    std::vector<view::Node> rows;
    const auto add = [&](const BundleID& bundleID, std::string name) {
        view::Node toggle{.id = "stays:" + bundleID,
                          .isEnabled = !isLocked,
                          .content = view::Toggle{.title = std::move(name),
                                                  .isOn = stays.contains(bundleID),
                                                  .change = [&controller, bundleID](bool on) {
                                                      controller.presenting().setStays(bundleID, on);
                                                  }}};
        rows.push_back(view::row("staying:" + bundleID,
                                 {{.id = "stays-icon:" + bundleID,
                                   .content = view::AppIcon{.bundleID = bundleID, .points = stayingIcon}},
                                  std::move(toggle)}));
    };
    BundleIDs listed;
    const auto now = floorToSeconds(parts_.platform.mainThread.date());
    for (ListedApp& app :
         listedApps(controller, parts_.platform.workspace, {.staying = none, .search = search_, .now = now})
             .apps) {
        if (!app.canBeForgotten() || stays.contains(app.bundleID)) {
            listed.insert(app.bundleID);
            add(app.bundleID, std::move(app.name));
        }
    }
    const AppNames names(controller.values(), parts_.platform.workspace);
    for (const BundleID& bundleID : search_.empty() ? stays : none) {
        if (!listed.contains(bundleID)) {
            add(bundleID, names.of(bundleID));  // it is not here now, and has no place of its own
        }
    }
    return rows;
}

void PresentingPage::search(const std::string& text) {
    search_ = text;
    changed_();
    announcement_.typed(search_, found_);
}

view::Node PresentingPage::staying(bool isLocked) {
    std::vector<view::Node> rows = appRows(isLocked);
    found_ = rows.size();
    if (rows.empty()) {
        rows.push_back(view::text("staying:none", search_.empty() ? whyNoApps(parts_.controller.values())
                                                                  : "No app here is called that."));
    }
    view::Node field{.id = "staying:search",
                     .label = "Search apps",
                     .width = appFieldWidth,
                     .content = view::SearchField{
                         .text = search_, .placeholder = "Search", .change = [this](const std::string& text) {
                             search(text);
                         }}};
    return {.id = "staying",
            .content = view::Group{.title = "Apps that stay in the bar",
                                   .children = {std::move(field),
                                                {.id = "staying:apps",
                                                 .content = view::Scroll{.height = stayingListHeight,
                                                                         .children = std::move(rows)}}}}};
}

view::Node PresentingPage::content() {
    const bool isLocked = parts_.controller.values().problems.layoutUnreadable.has_value();
    std::vector<view::Node> children;
    if (isLocked) {
        children.push_back(view::text("presenting:locked",
                                      "What an audience sees is written in your layout file. Until it can "
                                      "be read, there is nothing to change here."));
    }
    children.push_back(offering(isLocked));
    children.push_back(staying(isLocked));
    return view::column("page:presenting", std::move(children), 14);
}

}  // namespace velko
