#include <utility>
#include <vector>

#include "Velko/AppController.h"
#include "Velko/Apps/EmptyList.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Build.h"
#include "VelkoCore/Section.h"

namespace velko::SettingsPages {

namespace {

constexpr double listHeight = 320;

view::Node appList(const FaceParts& parts) {
    std::vector<view::Node> rows;
    for (const ListedApp& app : listedApps(parts.controller, parts.platform.workspace)) {
        rows.push_back(appRow(parts.controller, app));
    }
    if (rows.empty()) {
        rows.push_back(view::text("apps:empty", whyNoApps(parts.controller.values())));
    }
    return {.id = "apps", .content = view::Scroll{.height = listHeight, .children = std::move(rows)}};
}

view::Node newIcons(AppController& controller) {
    view::Node picker{.id = "new-icons",
                      .content = view::Picker{
                          .title = "Apps that you haven't sorted go to",
                          .options = {"Bar", "Tucked", "Buried"},
                          .selected = static_cast<std::size_t>(controller.values().layout.newIconDefault),
                          .choose = [&controller](std::size_t index) {
                              controller.preferences().setNewIconDefault(allSections.at(index));
                          }}};
    return picker;
}

view::Node transfer(AppController& controller) {
    return {
        .id = "transfer",
        .content = view::Group{
            .title = "Take your layout to another Mac",
            .children = {
                view::explanation("transfer:what",
                                  "Export where every app lives, then import it on your other Mac. "
                                  "Your click history stays here."),
                view::row("transfer:buttons",
                          {view::button("export",
                                        {.title = "Export…",
                                         .press = [&controller] { controller.transfer().exportLayout(); }}),
                           view::button("import", {.title = "Import…", .press = [&controller] {
                                                       controller.transfer().importLayout();
                                                   }})})}}};
}

}  // namespace

view::Node menuBar(const FaceParts& parts, const std::function<void()>& sortAgain) {
    return view::column(
        "page:menu-bar",
        {appList(parts),
         view::row("sorting", {newIcons(parts.controller), view::spacer("sorting:gap"),
                               view::button("sort-again", {.title = "Sort Again…", .press = sortAgain})}),
         transfer(parts.controller)},
        14);
}

}  // namespace velko::SettingsPages
