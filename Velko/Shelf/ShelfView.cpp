#include "Velko/Shelf/ShelfView.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/Apps/ManagedWords.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/ShowApp.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Search/AppSearch.h"
#include "VelkoCore/Visibility/ShelfLayout.h"

namespace velko {

namespace {

using view::Button;
using view::Menu;
using view::MenuItem;
using view::Node;
using view::SearchField;
using view::Stack;
using view::Text;

// Points
constexpr double tileGap = 6;
constexpr double padding = 12;
constexpr double headerHeight = 34;
constexpr double fieldWidth = 220;

constexpr std::size_t manyApps = ShelfLayout::columns;  // more than one row of them can be searched

bool showsBuried(const RevealState& state) {
    const auto* const peek = state.asPeeking();
    return peek != nullptr ? showsBuried(peek->base) : state == RevealState::revealedWithBuried();
}

/// The key that moves an app there, with Command.
char keyOf(Section section) {
    switch (section) {
        case Section::bar: return '1';
        case Section::tucked: return '2';
        case Section::buried: break;
    }
    return '3';
}

Menu tileMenu(const ShelfViewRequest& request, const BundleID& bundleID) {
    AppController& controller = request.parts.controller;
    const Layout& layout = controller.values().layout;
    Menu menu{
        {.title = "Open", .action = [open = request.onOpen, bundleID] { open(bundleID); }},
        {.title = "Show Me", .action = [&controller, bundleID] { controller.showMe().start(bundleID); }},
        MenuItem::separator()};
    if (controller.values().managed.places(bundleID)) {
        menu.push_back(MenuItem::notice(managedInWords));
        return menu;
    }
    for (const Section section : allSections) {
        // An app that waits for an answer may also stay where it is: that is an answer too.
        if (section != layout.section(bundleID) || layout.isWaiting(bundleID)) {
            menu.push_back(
                {.title = placingTitle(section),
                 .key = keyOf(section),
                 .action = [move = request.onMove, bundleID, section] { move(bundleID, section); }});
        }
    }
    return menu;
}

Node tile(const ShelfViewRequest& request, const PresentApp& app) {
    const BundleID& bundleID = app.bundleID;
    const bool isNew = request.parts.controller.values().layout.isWaiting(bundleID);
    return {.id = "tile:" + bundleID,
            .help = app.name,
            .width = view::Tile::usualWidth,
            .content = view::Tile{.bundleID = bundleID,
                                  .name = app.name,
                                  .badge = isNew ? "New" : "",
                                  .press = [open = request.onOpen, bundleID] { open(bundleID); },
                                  .menu = [request, bundleID] { return tileMenu(request, bundleID); }}};
}

Node line(std::string id, std::string words) {
    return {.id = std::move(id),
            .content = Text{.text = std::move(words), .isSecondary = true, .isCentred = true}};
}

std::vector<Node> rowsOf(const ShelfViewRequest& request, Section section,
                         const std::vector<PresentApp>& apps) {
    std::vector<Node> rows;
    for (const auto& appsOfRow : ShelfLayout::rows(apps)) {
        std::vector<Node> tiles;
        tiles.reserve(appsOfRow.size());
        for (const PresentApp& app : appsOfRow) {
            tiles.push_back(tile(request, app));
        }
        rows.push_back(
            {.id = "row:" + std::string(name(section)) + ":" + std::to_string(rows.size() + 1),
             .content = Stack{.axis = Stack::Axis::row, .spacing = tileGap, .children = std::move(tiles)}});
    }
    return rows;
}

std::string titleOf(Section section) {
    switch (section) {
        case Section::bar: return "Menu Bar";
        case Section::tucked: return "Tucked";
        case Section::buried: break;
    }
    return "Buried";
}

std::string invitationTo(Section section) {
    switch (section) {
        case Section::bar: return "Drop an app here to keep it in the bar.";
        case Section::tucked: return "Drop an app here to tuck it.";
        case Section::buried: break;
    }
    return "Drop an app here to bury it.";
}

/// The tiles of a section, in a frame that takes other tiles. Of the bar, which has none here, the frame
/// alone.
Node group(const ShelfViewRequest& request, Section section, const std::vector<PresentApp>& apps) {
    const std::string id(name(section));
    std::vector<Node> children = rowsOf(request, section, apps);
    if (children.empty()) {
        children.push_back(line("empty:" + id, invitationTo(section)));
    }
    const auto drop = [&controller = request.parts.controller, move = request.onMove,
                       section](const BundleID& bundleID) {
        const Layout& layout = controller.values().layout;
        if (controller.values().managed.places(bundleID)) {
            return;
        }
        if (layout.section(bundleID) != section || layout.isWaiting(bundleID)) {
            move(bundleID, section);
        }
    };
    return {.id = "group:" + id,
            .content = view::Group{.title = titleOf(section), .children = std::move(children), .drop = drop}};
}

Node buttonInMiddle(const std::string& id, Button button) {
    return view::row(id + ":row", {view::spacer(id + ":before"), view::button(id, std::move(button)),
                                   view::spacer(id + ":after")});
}

/// Why the shelf is empty, and a button to where that can be changed.
std::vector<Node> emptiness(const ShelfViewRequest& request, bool anyBuried) {
    AppController& controller = request.parts.controller;
    const AppValues& values = controller.values();
    const auto because = [](std::string words) { return std::vector{line("empty", std::move(words))}; };
    if (!values.health().isOk()) {
        return because("Everything is out in the menu bar for now.");
    }
    if (!values.inventoryLoaded) {
        return because("Still looking through your menu bar…");
    }
    std::vector<Node> lines;
    if (anyBuried) {
        lines = because("Nothing is tucked, but some apps are buried.");
        lines.push_back(buttonInMiddle("show-buried", {.title = "Show Buried", .press = [&controller] {
                                                           controller.handle(RevealEvent::toggleWithBuried());
                                                       }}));
        return lines;
    }
    const bool anyTucked = std::ranges::any_of(
        values.layout.sections, [](const auto& placed) { return placed.second == Section::tucked; });
    if (anyTucked) {
        return because("None of your tucked apps is running.");
    }
    lines = because("Nothing is tucked yet. You can choose what to tuck in the settings.");
    lines.push_back(buttonInMiddle(
        "open-settings",
        {.title = "Open Settings", .press = [&host = request.parts.host] { host.onSettings(); }}));
    return lines;
}

/// The field to find an app, where there are many, and the pin.
Node header(const ShelfViewRequest& request, std::size_t count, const BundleID& first) {
    AppController& controller = request.parts.controller;
    std::vector<Node> children;
    if (count > manyApps) {
        children.push_back(
            {.id = "find",
             .width = fieldWidth,
             .content = SearchField{.text = request.typed,
                                    .placeholder = "Find an app",
                                    .hasFocus = true,
                                    .change = request.onType,
                                    .key = [open = request.onOpen, first](const view::KeyPress& pressed) {
                                        const bool opens = pressed.isPlain() && !first.empty() &&
                                                           pressed.key == view::KeyPress::Key::enter;
                                        if (opens) {
                                            open(first);
                                        }
                                        return opens;
                                    }}});
    }
    children.push_back(view::spacer("header:gap"));
    const bool isPinned = controller.values().isShelfPinned;
    const char* const what = isPinned ? "Let the shelf close by itself" : "Keep the shelf open";
    children.push_back(
        {.id = "pin",
         .label = what,
         .help = what,
         .content = Button{.symbol = isPinned ? "pin.fill" : "pin",
                           .press = [&controller, isPinned] { controller.pinShelf(!isPinned); }}});
    return view::row("header", std::move(children));
}

void keepFitting(std::vector<PresentApp>& apps, const std::string& typed) {
    std::erase_if(apps, [&](const PresentApp& app) { return !AppSearch::match(typed, app.name); });
}

}  // namespace

view::Node shelfView(const ShelfViewRequest& request) {
    const AppValues& values = request.parts.controller.values();
    const bool withBuried = showsBuried(values.state);
    HiddenApps apps = hiddenApps(request.parts.controller);
    const bool anyBuried = !apps.buried.empty();
    if (!withBuried) {
        apps.buried.clear();
    }
    const std::size_t count = apps.tucked.size() + apps.buried.size();
    const std::string typed = count > manyApps ? request.typed : "";
    keepFitting(apps.tucked, typed);
    keepFitting(apps.buried, typed);

    std::vector<Node> sections;
    if (const auto& failed = values.failedOpening) {
        const AppNames names(values, request.parts.platform.workspace);
        sections.push_back(line("failed", describe(*failed, names)));
    }
    if (count == 0) {
        std::ranges::move(emptiness(request, anyBuried), std::back_inserter(sections));
    } else if (apps.areNone()) {
        sections.push_back(line("none", "No app here has that name."));
    } else if (withBuried) {
        sections.push_back(group(request, Section::tucked, apps.tucked));
        sections.push_back(group(request, Section::buried, apps.buried));
    } else {
        std::ranges::move(rowsOf(request, Section::tucked, apps.tucked), std::back_inserter(sections));
    }
    std::vector<Node> parts;
    double room = request.height - 2 * padding;
    if (count > 0) {
        sections.push_back(group(request, Section::bar, {}));
        const auto& first = apps.tucked.empty() ? apps.buried : apps.tucked;
        parts.push_back(header(request, count, first.empty() ? BundleID() : first.front().bundleID));
        room -= headerHeight;
    }
    parts.push_back(
        {.id = "scroll",
         .content = view::Scroll{.height = std::max(0.0, room),
                                 .children = {view::column("sections", std::move(sections), tileGap)}}});
    return {.id = "shelf",
            .label = withBuried ? "Tucked and buried apps" : "Tucked apps",
            .content = Stack{.padding = padding, .children = std::move(parts)}};
}

}  // namespace velko
