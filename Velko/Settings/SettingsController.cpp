#include "Velko/Settings/SettingsController.h"

#include <algorithm>
#include <array>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/AppMenu.h"
#include "Velko/App/FaceParts.h"
#include "Velko/App/Health.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Broom/StatusMenus.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Node.h"

namespace velko::SettingsPages {

namespace {

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

view::Node unreadable(const FaceParts& parts, const std::string& reason, MenuActions& actions,
                      EarlierLayoutsWindow& earlier) {
    AppController& controller = parts.controller;
    const auto button = [](const char* what, const char* title, std::function<void()> press) {
        return view::button(std::string("problem:layout:") + what,
                            {.title = title, .press = std::move(press)});
    };
    return problem("problem:layout", std::string(describe(Health::Kind::layoutUnreadable)), reason,
                   {button("edit", "Edit Layout File…", [&actions] { actions.editLayout(); }),
                    button("again", "Try Again", [&actions] { actions.reloadLayout(); }),
                    button("earlier", "Earlier Layouts…", [&earlier] { earlier.show(); }),
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

/// The file of the organisation is not the user's to repair. They can tell whoever looks after it.
view::Node unmanageable(const AppValues& values) {
    const std::size_t count = values.managedFaults.size();
    const std::string more =
        count < 2 ? "" : " And " + std::to_string(count - 1) + " more; the log has them.";
    return problem("problem:managed",
                   values.managed.isEmpty() ? "Your organisation's layout can't be used."
                                            : "Part of your organisation's layout can't be used.",
                   values.managedFaults.front() + more, {});
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
std::vector<view::Node> problems(const FaceParts& parts, MenuActions& actions,
                                 EarlierLayoutsWindow& earlier) {
    AppController& controller = parts.controller;
    const AppValues& values = controller.values();
    const HealthFacts& facts = values.problems;
    std::vector<view::Node> result;
    if (facts.engineUnavailable) {
        result.push_back(unsupported(parts, actions));
    }
    if (facts.layoutUnreadable) {
        result.push_back(unreadable(parts, *facts.layoutUnreadable, actions, earlier));
    }
    if (values.saveFailure) {
        result.push_back(unsaved(controller, *values.saveFailure));
    }
    if (!values.managedFaults.empty()) {
        result.push_back(unmanageable(values));
    }
    if (values.historyFailure) {
        result.push_back(
            problem("problem:history", "Your layout as it was couldn't be kept.",
                    "There is no way back to it among the earlier layouts: " + *values.historyFailure, {}));
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

view::Node keys(const Context& context) {
    return context.keys.content();
}

view::Node presenting(const Context& context) {
    return context.presenting.content();
}

constexpr std::array pages{
    Page{.name = "menu-bar", .title = "Menu Bar", .symbol = "menubar.rectangle", .make = menuBar},
    Page{.name = "general", .title = "General", .symbol = "gearshape", .make = general},
    Page{.name = "keys", .title = "Keys", .symbol = "keyboard", .make = keys},
    Page{.name = "presenting", .title = "Presenting", .symbol = "play.rectangle", .make = presenting},
    Page{.name = "about", .title = "About", .symbol = "info.circle", .make = about},
};

}  // namespace

std::span<const Page> all() {
    return pages;
}

}  // namespace velko::SettingsPages

namespace velko {

namespace {

constexpr auto pageKey = "settingsPage";

}  // namespace

SettingsController::SettingsController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts),
      broom_(broom),
      window_(parts.ports.surfaces, Surfaces::Kind::settings),
      menu_(parts),
      keys_(parts, [this] { update(); }),
      presenting_(parts, [this] { update(); }),
      apps_(parts, [this] { update(); }),
      earlier_(parts),
      broomMoves_(broom_.observe([this] { update(); })) {
    const auto pages = SettingsPages::all();
    const auto last =
        std::ranges::find(pages, parts_.ports.defaults.text(pageKey), &SettingsPages::Page::name);
    page_ = last == pages.end() ? 0 : static_cast<std::size_t>(last - pages.begin());
}

void SettingsController::show() {
    if (isShown()) {
        window_.raise();
        update();
        return;
    }
    apps_.opened();
    if (parts_.controller.values().health().isOk()) {
        parts_.controller.requestScan(ScanDepth::full);  // who has no room in the bar may have changed
    }
    window_.open({.content = tree(), .closed = [this] { closed(); }},
                 parts_.controller.observe([this] { update(); }));
    parts_.host.onVisibilityChange();
}

void SettingsController::showApp(const BundleID& bundleID) {
    page_ = 0;
    leavePage();
    show();
    apps_.pointTo(bundleID);
}

void SettingsController::leavePage() {
    keys_.leave();
    presenting_.leave();
    apps_.leave();
}

void SettingsController::closed() {
    leavePage();
    earlier_.close();
    hasSaidOutOfSight_ = std::exchange(saysOutOfSight_, false) || hasSaidOutOfSight_;
    parts_.host.onVisibilityChange();
}

void SettingsController::update() {
    if (isShown()) {
        window_.update(tree());
    }
}

view::Node SettingsController::tree() {
    constexpr double width = 680;
    std::vector<view::Node> children = SettingsPages::problems(parts_, menu_, earlier_);
    if (broom_.isOutOfSight() && !hasSaidOutOfSight_) {
        saysOutOfSight_ = true;
        children.push_back(SettingsPages::iconOutOfSight(menu_));
    }
    const auto pages = SettingsPages::all();
    std::vector<view::Pages::Tab> tabs;
    for (const SettingsPages::Page& page : pages) {
        tabs.push_back({.title = std::string(page.title), .symbol = std::string(page.symbol)});
    }
    children.push_back(pages[page_].make({.parts = parts_,
                                          .actions = menu_,
                                          .apps = apps_,
                                          .keys = keys_,
                                          .presenting = presenting_,
                                          .earlier = earlier_}));
    view::Node shown{.id = "pages",
                     .label = "Pages",
                     .content = view::Pages{.tabs = std::move(tabs),
                                            .selected = page_,
                                            .style = view::Pages::Style::toolbar,
                                            .choose = [this](std::size_t page) { turnTo(page); },
                                            .children = std::move(children)}};
    std::vector<view::Node> content;
    content.push_back(std::move(shown));
    return {.id = "settings",
            .width = width,
            .content = view::Stack{.padding = 20, .children = std::move(content)}};
}

void SettingsController::turnTo(std::size_t page) {
    page_ = page;
    leavePage();
    parts_.ports.defaults.setText(pageKey, std::string(SettingsPages::all()[page].name));
    update();
}

}  // namespace velko
