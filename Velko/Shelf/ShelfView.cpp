#include "Velko/Shelf/ShelfView.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/Apps/HiddenApps.h"
#include "Velko/Apps/PresentApps.h"
#include "Velko/Flows/ShowApp.h"
#include "Velko/View/Build.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Visibility/ShelfLayout.h"

namespace velko {

namespace {

using view::Menu;
using view::MenuItem;
using view::Node;
using view::Stack;
using view::Text;

constexpr double tileWidth = 76;  // points
constexpr double tileGap = 6;     // points
constexpr double padding = 12;    // points

[[nodiscard]] bool showsBuried(const RevealState& state) {
    const auto* const peek = state.asPeeking();
    return peek != nullptr ? showsBuried(peek->base) : state == RevealState::revealedWithBuried();
}

[[nodiscard]] std::string menuTitle(Section section) {
    switch (section) {
        case Section::bar: return "Keep in the Bar";
        case Section::tucked: return "Tuck";
        case Section::buried: break;
    }
    return "Bury";
}

[[nodiscard]] Menu tileMenu(const ShelfViewRequest& request, const BundleID& bundleID) {
    AppController& controller = request.controller;
    const Layout& layout = controller.values().layout;
    Menu menu{
        {.title = "Open", .action = [open = request.open, bundleID] { open(bundleID); }},
        {.title = "Show Me", .action = [&controller, bundleID] { controller.showMe().start(bundleID); }},
        MenuItem::separator()};
    for (const Section section : allSections) {
        // For an app that waits for an answer, to stay where it is is an answer too.
        if (section != layout.section(bundleID) || layout.isWaiting(bundleID)) {
            menu.push_back({.title = menuTitle(section),
                            .action = [move = request.move, bundleID, section] { move(bundleID, section); }});
        }
    }
    return menu;
}

[[nodiscard]] Node tile(const ShelfViewRequest& request, const PresentApp& app) {
    const BundleID& bundleID = app.bundleID;
    return {
        .id = "tile:" + bundleID,
        .help = app.name,
        .width = tileWidth,
        .content = view::Tile{.bundleID = bundleID,
                              .name = app.name,
                              .badge = request.controller.values().layout.isWaiting(bundleID) ? "New" : "",
                              .press = [open = request.open, bundleID] { open(bundleID); },
                              .menu = [request, bundleID] { return tileMenu(request, bundleID); }}};
}

[[nodiscard]] Node line(std::string id, std::string words) {
    return {.id = std::move(id),
            .content = Text{.text = std::move(words), .isSecondary = true, .isCentred = true}};
}

[[nodiscard]] std::vector<Node> rowsOf(const ShelfViewRequest& request, Section section,
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

[[nodiscard]] Node group(const ShelfViewRequest& request, Section section,
                         const std::vector<PresentApp>& apps) {
    const std::string id(name(section));
    const bool isTucked = section == Section::tucked;
    std::vector<Node> children = rowsOf(request, section, apps);
    if (children.empty()) {
        children.push_back(
            line("empty:" + id, isTucked ? "Drop an app here to tuck it." : "Drop an app here to bury it."));
    }
    const auto drop = [&controller = request.controller, move = request.move,
                       section](const BundleID& bundleID) {
        if (controller.values().layout.section(bundleID) != section) {
            move(bundleID, section);
        }
    };
    return {.id = "group:" + id,
            .content = view::Group{
                .title = isTucked ? "Tucked" : "Buried", .children = std::move(children), .drop = drop}};
}

/// What an empty shelf says.
[[nodiscard]] std::string whyEmpty(const AppValues& values, bool anyBuried) {
    const Layout& layout = values.layout;
    if (!values.health().isOk()) {
        return "Everything is out in the menu bar for now.";
    }
    if (!values.inventoryLoaded) {
        return "Still looking through your menu bar…";
    }
    if (anyBuried) {
        return "Nothing is tucked, but some apps are buried. Close this, then Option-click the broom.";
    }
    const bool anyTucked = std::ranges::any_of(
        layout.sections, [](const auto& placed) { return placed.second == Section::tucked; });
    return anyTucked ? "None of your tucked apps is running."
                     : "Nothing is tucked yet. You can choose what to tuck in Settings.";
}

}  // namespace

Node shelfView(const ShelfViewRequest& request) {
    const AppValues& values = request.controller.values();
    const bool withBuried = showsBuried(values.state);
    const HiddenApps apps = hiddenApps(request.controller);
    std::vector<Node> sections;
    if (apps.tucked.empty() && (apps.buried.empty() || !withBuried)) {
        sections.push_back(line("empty", whyEmpty(values, !apps.buried.empty())));
    } else if (withBuried) {
        sections.push_back(group(request, Section::tucked, apps.tucked));
        sections.push_back(group(request, Section::buried, apps.buried));
    } else {
        sections = rowsOf(request, Section::tucked, apps.tucked);
    }
    Node scroll{
        .id = "scroll",
        .content = view::Scroll{.height = std::max(0.0, request.height - 2 * padding),
                                .children = {view::column("sections", std::move(sections), tileGap)}}};
    return {.id = "shelf",
            .label = withBuried ? "Tucked and buried apps" : "Tucked apps",
            .content = Stack{.padding = padding, .children = {std::move(scroll)}}};
}

}  // namespace velko
