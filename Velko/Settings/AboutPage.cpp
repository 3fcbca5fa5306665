#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/AppMenu.h"
#include "Velko/App/FaceParts.h"
#include "Velko/Broom/BroomIcon.h"
#include "Velko/Broom/StatusMenus.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Node.h"

namespace velko::SettingsPages {

namespace {

std::string versionLine(const AppInfo& info) {
    return "Version " + info.version + (info.build.empty() ? "" : " (" + info.build + ")") +
           (info.channel.empty() ? "" : ", " + info.channel);
}

view::Node updates(const FaceParts& parts, MenuActions& actions) {
    const auto why = Updates(parts.ports).whyUnavailable();
    view::Node check = view::button(
        "updates:check", {.title = "Check for Updates…", .press = [&actions] { actions.checkForUpdates(); }});
    check.isEnabled = !why;
    std::vector<view::Node> children{std::move(check)};
    if (why) {
        children.push_back(view::explanation("updates:why", *why));
    }
    return view::row("updates", std::move(children));
}

view::Node log(MenuActions& actions) {
    return view::row(
        "log",
        {view::button("log:open", {.title = "Open Log File", .press = [&actions] { actions.openLog(); }}),
         view::button("log:copy", {.title = "Copy Log", .press = [&actions] { actions.copyLog(); }}),
         view::explanation("log:what", "What Velko decided, and why.")});
}

}  // namespace

view::Node about(const Context& context) {
    const AppInfo& info = context.parts.controller.info();
    view::Node version = view::text("version", versionLine(info));
    std::get<view::Text>(version.content).isSelectable = true;
    return view::column(
        "page:about",
        {view::row(
             "identity",
             {{.id = "identity:icon", .content = view::Picture{.drawing = BroomDrawing::coloured(64)}},
              view::column(
                  "identity:words",
                  {view::text("identity:name", "Velko", view::Text::Style::title), std::move(version)}, 2)}),
         updates(context.parts, context.actions), log(context.actions),
         view::text("privacy", "What Velko sees and learns stays on this Mac; nothing of it leaves."),
         view::explanation(
             "licence",
             "Free to use, change and pass on under the MIT License. © 2026 The Velko developers.")},
        16);
}

}  // namespace velko::SettingsPages
