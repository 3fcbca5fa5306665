#include "Playground/Web/AppMenus.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <functional>
#include <ranges>
#include <utility>
#include <vector>

#include "Playground/Html/Markup.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Velko/App/AppController.h"
#include "Velko/App/AppMenu.h"

namespace velko::web {

namespace {

using Entry = AppMenu::Entry;

void closeFrontWindow(SimulatedMac& mac) {
    // A window that another one opens comes after that in the table.
    for (const Surfaces::Traits& each : Surfaces::all() | std::views::reverse) {
        SimulatedSurface& surface = mac.surfaces.surface(each.kind);
        if (each.isWindow() && surface.isOpen()) {
            surface.dismiss(Surface::Dismissal::closeButton);
            return;
        }
    }
}

/// What the simulated system does for a command; absent where it has nothing of the kind.
std::function<void()> deedOf(AppMenu::Command command, Session& session) {
    SimulatedMac& mac = session.mac();
    switch (command) {
        case AppMenu::Command::about:
            return [&session, &mac] {
                if (const AppController* velko = session.world().velko()) {
                    const AppInfo& info = velko->info();
                    mac.dialogs.alert({.title = "Velko", .message = "Version " + info.version});
                }
            };
        case AppMenu::Command::quit: return [&mac] { mac.application.terminate(); };
        case AppMenu::Command::closeWindow: return [&mac] { closeFrontWindow(mac); };
        default: return nullptr;
    }
}

/// An entry as an item of the page's menus. An upper-case key has Shift with it.
view::MenuItem itemOf(const Entry& entry, Session& session) {
    if (entry.title.empty()) {
        return view::MenuItem::separator();
    }
    const AppMenu::State state =
        entry.state ? entry.state() : AppMenu::State{.title = entry.title, .isEnabled = true};
    std::function<void()> deed = entry.action;
    if (!deed && entry.command) {
        deed = deedOf(*entry.command, session);
    }
    const bool isKnown = deed != nullptr;
    const int key = entry.withShift ? std::toupper(static_cast<unsigned char>(entry.key)) : entry.key;
    return {.title = state.title,
            .help = isKnown ? "" : "The simulated Mac leaves this out.",
            .key = entry.withOption ? '\0' : static_cast<char>(key),
            .isEnabled = state.isEnabled && isKnown,
            .action = std::move(deed)};
}

std::vector<AppMenu::Menu> menusNow(Session& session) {
    return session.mac().surfaces.isWindowOpen() ? session.world().menus() : std::vector<AppMenu::Menu>();
}

}  // namespace

std::string drawAppMenus(Session& session) {
    std::string titles;
    std::size_t number = 0;
    for (const AppMenu::Menu& menu : menusNow(session)) {
        titles += html::textElement("button",
                                    {{"type", "button"},
                                     {"class", "menu-title-button"},
                                     {"data-key", "app-menu:" + menu.title},
                                     {"data-app-menu", std::to_string(number++)},
                                     {"aria-haspopup", "menu"}},
                                    menu.title);
    }
    return titles.empty() ? "" : html::element("span", {{"class", "bar-mark"}}) + titles;
}

Done openAppMenu(Session& session, const Fields& fields) {
    const auto menus = menusNow(session);
    const auto number = fields.number("menu").value_or(-1);
    if (number < 0 || std::cmp_greater_equal(number, menus.size())) {
        return std::unexpected("There is no such menu.");
    }
    const std::string anchor = "app-menu:" + std::to_string(number);
    const auto open = session.menus();
    const bool isOpen = !open.empty() && open.front().anchor == anchor;
    if (!open.empty()) {
        session.closeMenus();
    }
    if (isOpen) {
        return {};
    }
    view::Menu items;
    for (const Entry& entry : menus[static_cast<std::size_t>(number)].entries) {
        items.push_back(itemOf(entry, session));
    }
    session.openControlMenu({.anchor = anchor, .items = std::move(items)});
    return {};
}

Done pressAppKey(Session& session, const Fields& fields) {
    const std::string key = fields.text("key").value_or("");
    const bool withShift = fields.flag("shift");
    for (const AppMenu::Menu& menu : menusNow(session)) {
        const auto entry = std::ranges::find_if(menu.entries, [&](const Entry& each) {
            return key == std::string(1, each.key) && each.withShift == withShift && !each.withOption;
        });
        if (entry != menu.entries.end()) {
            const view::MenuItem item = itemOf(*entry, session);
            if (item.isEnabled) {
                item.action();
            }
            return {};
        }
    }
    return {};
}

}  // namespace velko::web
