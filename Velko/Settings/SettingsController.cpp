#include "Velko/Settings/SettingsController.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/AppMenu.h"
#include "Velko/App/FaceParts.h"
#include "Velko/App/Health.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Broom/BroomIcon.h"
#include "Velko/Broom/StatusMenus.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Node.h"

namespace velko::SettingsPages {

namespace {

// The page about Velko

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

view::Node about(const FaceParts& parts, MenuActions& actions) {
    const AppInfo& info = parts.controller.info();
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
         updates(parts, actions), log(actions),
         view::text("privacy", "What Velko sees and learns stays on this Mac; nothing of it leaves."),
         view::explanation(
             "licence",
             "Free to use, change and pass on under the MIT License. © 2026 The Velko developers.")},
        16);
}

// Problems

view::Node problem(const std::string& id, std::string what, std::string more,
                   std::vector<view::Node> remedies) {
    view::Node mark{
        .id = id + ":mark",
        .content = view::Symbol{.name = "exclamationmark.triangle", .points = 18, .ink = view::Ink::warning}};
    std::vector<view::Node> words{view::text(id + ":what", std::move(what), view::Text::Style::headline)};
    if (!more.empty()) {
        words.push_back(view::explanation(id + ":more", std::move(more)));
    }
    if (!remedies.empty()) {
        words.push_back(view::row(id + ":remedies", std::move(remedies)));
    }
    return {.id = id,
            .content = view::Group{
                .children = {
                    {.id = id + ":row",
                     .content = view::Stack{
                         .axis = view::Stack::Axis::row,
                         .children = {std::move(mark), view::column(id + ":words", std::move(words), 6)}}}}}};
}

view::Node unsupported(const FaceParts& parts, MenuActions& actions) {
    std::vector<view::Node> remedies;
    if (!Updates(parts.ports).whyUnavailable()) {
        remedies.push_back(view::button(
            "problem:engine:updates",
            {.title = "Check for Updates…", .press = [&actions] { actions.checkForUpdates(); }}));
    }
    return problem("problem:engine", std::string(describe(Health::Kind::engineUnavailable)),
                   "A newer Velko may know this build.", std::move(remedies));
}

view::Node unreadable(const FaceParts& parts, const std::string& reason, MenuActions& actions) {
    AppController& controller = parts.controller;
    const auto button = [](const char* what, const char* title, std::function<void()> press) {
        return view::button(std::string("problem:layout:") + what,
                            {.title = title, .press = std::move(press)});
    };
    return problem("problem:layout", std::string(describe(Health::Kind::layoutUnreadable)), reason,
                   {button("edit", "Edit Layout File…", [&actions] { actions.editLayout(); }),
                    button("again", "Try Again", [&actions] { actions.reloadLayout(); }),
                    button("import", "Import…", [&controller] { controller.transfer().importLayout(); }),
                    button("afresh", "Start Afresh…", [&controller, &host = parts.host] {
                        controller.transfer().offerToStartAfresh([&host] { host.onResort(); });
                    })});
}

view::Node unsaved(AppController& controller, const std::string& reason) {
    return problem("problem:save", "Your latest changes couldn't be saved.", reason,
                   {view::button("problem:save:again",
                                 {.title = "Try Again", .press = [&controller] { controller.saveNow(); }})});
}

view::Node refused(AppController& controller) {
    return problem("problem:refusal", refusalInWords, {},
                   {view::button("problem:refusal:again",
                                 {.title = "Try Again", .press = [&controller] { controller.tryAgain(); }})});
}

view::Node untrusted(FaceHost& host) {
    return problem("problem:trust", std::string(describe(Health::Kind::needsAccessibility)),
                   "Switch Velko on in the list. It notices by itself.",
                   {view::button("problem:trust:open", {.title = openPermissionTitle,
                                                        .style = view::Button::Style::primary,
                                                        .press = [&host] { host.onPermission(); }})});
}

/// Says that Velko's icon does not show in the menu bar, and offers to open the page where the user can
/// change that.
view::Node iconOutOfSight(MenuActions& actions) {
    return problem(
        "problem:icon", "Velko's icon doesn't show in your menu bar.",
        "There may be no room for it, or it may be switched off in the system's settings.",
        {view::button("problem:icon:open", {.title = "Open Menu Bar Settings…",
                                            .press = [&actions] { actions.openMenuBarSettings(); }})});
}

/// What keeps Velko from its work, each problem with what the user can do about it; empty when there is no
/// problem.
std::vector<view::Node> problems(const FaceParts& parts, MenuActions& actions) {
    AppController& controller = parts.controller;
    const AppValues& values = controller.values();
    const HealthFacts& facts = values.problems;
    std::vector<view::Node> result;
    if (facts.engineUnavailable) {
        result.push_back(unsupported(parts, actions));
    }
    if (facts.layoutUnreadable) {
        result.push_back(unreadable(parts, *facts.layoutUnreadable, actions));
    }
    if (values.saveFailure) {
        result.push_back(unsaved(controller, *values.saveFailure));
    }
    if (facts.trustMissing) {
        result.push_back(untrusted(parts.host));
    }
    if (values.isRefused && values.health().isOk()) {
        result.push_back(refused(controller));
    }
    if (!controller.info().isInApplications()) {
        result.push_back(
            problem("problem:place", wrongPlaceInWords, "It runs from " + controller.info().bundlePath + ".",
                    {view::button("problem:place:move", {.title = moveTitle, .press = [&host = parts.host] {
                                                             host.onMoveToApplications();
                                                         }})}));
    }
    return result;
}

}  // namespace

}  // namespace velko::SettingsPages

namespace velko {

SettingsController::SettingsController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts),
      broom_(broom),
      window_(parts.ports.surfaces, Surfaces::Kind::settings),
      menu_(parts),
      keys_(parts, [this] { update(); }),
      broomMoves_(broom_.observe([this] { update(); })) {}

void SettingsController::show() {
    if (isShown()) {
        window_.raise();
        update();
        return;
    }
    window_.open({.content = tree(), .closed = [this] { closed(); }},
                 parts_.controller.observe([this] { update(); }));
    parts_.host.onVisibilityChange();
}

void SettingsController::showApp(const BundleID& bundleID) {
    page_ = 0;
    if (listed_ != parts_.controller.values().layout.section(bundleID)) {
        listed_.reset();  // the list would lack it
    }
    keys_.leave();
    show();
}

void SettingsController::closed() {
    keys_.leave();
    hasSaidOutOfSight_ = std::exchange(saysOutOfSight_, false) || hasSaidOutOfSight_;
    parts_.host.onVisibilityChange();
}

void SettingsController::update() {
    if (isShown()) {
        window_.update(tree());
    }
}

view::Node SettingsController::tree() {
    constexpr double width = 640;
    std::vector<view::Node> children = SettingsPages::problems(parts_, menu_);
    if (broom_.isOutOfSight() && !hasSaidOutOfSight_) {
        saysOutOfSight_ = true;
        children.push_back(SettingsPages::iconOutOfSight(menu_));
    }
    children.push_back({.id = "pages",
                        .label = "Pages",
                        .content = view::Pages{.tabs = {{.title = "Menu Bar", .symbol = "menubar.rectangle"},
                                                        {.title = "General", .symbol = "gearshape"},
                                                        {.title = "Keys", .symbol = "keyboard"},
                                                        {.title = "About", .symbol = "info.circle"}},
                                               .selected = page_,
                                               .choose =
                                                   [this](std::size_t page) {
                                                       page_ = page;
                                                       keys_.leave();
                                                       update();
                                                   },
                                               .children = {page()}}});
    return {.id = "settings",
            .width = width,
            .content = view::Stack{.spacing = 14, .padding = 20, .children = std::move(children)}};
}

view::Node SettingsController::page() {
    switch (page_) {
        case 0: {
            const auto choose = [this](std::optional<Section> section) {
                listed_ = section;
                update();
            };
            return SettingsPages::menuBar(parts_, {.section = listed_, .choose = choose});
        }
        case 1: return SettingsPages::general(parts_);
        case 2: return keys_.content();
        default: return SettingsPages::about(parts_, menu_);
    }
}

}  // namespace velko
