#include "Velko/Shelf/ShelfController.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Flows/ShowApp.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoCore/Visibility/ShelfLayout.h"

namespace velko {

namespace {

using view::Menu;
using view::MenuItem;
using view::Node;
using view::Stack;
using view::Text;

// Points
constexpr double gapBelowBar = 4;
constexpr double tileGap = 6;
constexpr double padding = 12;

struct ShelfViewRequest {
    AppController& controller;  ///< outlives the tree
    AppNames names;
    double height = 0;                                     ///< how high the shelf may be, in points
    std::function<void(const BundleID&)> onOpen;           ///< the user wants an app's menu
    std::function<void(const BundleID&, Section)> onMove;  ///< the user moves an app to another section
};

bool showsBuried(const RevealState& state) {
    const auto* const peek = state.asPeeking();
    return peek != nullptr ? showsBuried(peek->base) : state == RevealState::revealedWithBuried();
}

Menu tileMenu(const ShelfViewRequest& request, const BundleID& bundleID) {
    AppController& controller = request.controller;
    const Layout& layout = controller.values().layout;
    Menu menu{
        {.title = "Open", .action = [open = request.onOpen, bundleID] { open(bundleID); }},
        {.title = "Show Me", .action = [&controller, bundleID] { controller.showMe().start(bundleID); }},
        MenuItem::separator()};
    for (const Section section : allSections) {
        // An app that waits for an answer may also stay where it is: that is an answer too.
        if (section != layout.section(bundleID) || layout.isWaiting(bundleID)) {
            menu.push_back(
                {.title = placingTitle(section),
                 .action = [move = request.onMove, bundleID, section] { move(bundleID, section); }});
        }
    }
    return menu;
}

Node tile(const ShelfViewRequest& request, const PresentApp& app) {
    const BundleID& bundleID = app.bundleID;
    return {
        .id = "tile:" + bundleID,
        .help = app.name,
        .width = view::Tile::usualWidth,
        .content = view::Tile{.bundleID = bundleID,
                              .name = app.name,
                              .badge = request.controller.values().layout.isWaiting(bundleID) ? "New" : "",
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

Node group(const ShelfViewRequest& request, Section section, const std::vector<PresentApp>& apps) {
    const std::string id(name(section));
    const bool isTucked = section == Section::tucked;
    std::vector<Node> children = rowsOf(request, section, apps);
    if (children.empty()) {
        children.push_back(
            line("empty:" + id, isTucked ? "Drop an app here to tuck it." : "Drop an app here to bury it."));
    }
    const auto drop = [&controller = request.controller, move = request.onMove,
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
std::string whyEmpty(const AppValues& values, bool anyBuried) {
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

/// A tile for each tucked app that is present, eight to a row. When buried apps are out as well, each section
/// has a group of its own, and tiles can be dragged from one to the other.
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
    if (const auto& failed = values.failedOpening) {
        sections.insert(sections.begin(), line("failed", describe(*failed, request.names)));
    }
    Node scroll{
        .id = "scroll",
        .content = view::Scroll{.height = std::max(0.0, request.height - 2 * padding),
                                .children = {view::column("sections", std::move(sections), tileGap)}}};
    return {.id = "shelf",
            .label = withBuried ? "Tucked and buried apps" : "Tucked apps",
            .content = Stack{.padding = padding, .children = {std::move(scroll)}}};
}

}  // namespace

ShelfController::ShelfController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts),
      broom_(broom),
      panel_(parts.ports.surfaces, Surfaces::Kind::shelf),
      placeChanges_(broom_.observePlace([this] { sync(); })) {}

void ShelfController::sync() {
    if (!parts_.controller.values().isShelfShown()) {
        panel_.close();
        return;
    }
    const auto place = broom_.placeBelow(gapBelowBar);
    if (!place) {
        panel_.close();
        return;
    }
    if (!panel_.isOpen()) {
        panel_.open({.place = place,
                     .motion = motion(),
                     .takesKeyboard = !parts_.controller.values().revealedByPointer,
                     .content = content(*place),
                     .ignoresPress = [this](Point point) { return broom_.holdsUpwards(point); },
                     .dismiss = [this](Surface::Dismissal how) { return onDismiss(how); },
                     .keyPressed = [this] { parts_.controller.shelfTouched(); }});
    } else {
        panel_.update(content(*place));
        panel_.move(*place);
    }
}

Surface::Motion ShelfController::motion() const {
    if (parts_.ports.surfaces.reducesMotion()) {
        return {.fade = Timing::reducedMotionFade};
    }
    return {.springResponse = Timing::shelfSpringResponse, .springDamping = Timing::shelfSpringDamping};
}

view::Node ShelfController::content(const Surface::Place& place) const {
    return shelfView({.controller = parts_.controller,
                      .names = AppNames(parts_.controller.values(), parts_.platform.workspace),
                      .height = place.bounds.height,
                      .onOpen = [this](const BundleID& bundleID) { parts_.controller.open(bundleID); },
                      .onMove =
                          [this](const BundleID& bundleID, Section section) {
                              parts_.controller.place(bundleID, section);
                              parts_.controller.shelfTouched();
                          }});
}

bool ShelfController::onDismiss(Surface::Dismissal how) const {
    parts_.controller.closeShelf(how == Surface::Dismissal::clickOutside ? ShelfDismissal::click
                                                                         : ShelfDismissal::escape);
    return !parts_.controller.values().isShelfShown();
}

}  // namespace velko
