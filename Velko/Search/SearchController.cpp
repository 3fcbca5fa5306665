#include "Velko/Search/SearchController.h"

#include <algorithm>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

namespace {

// Points
constexpr double searchGapBelowBar = 4;
constexpr double searchWidth = 380;
constexpr double searchPadding = 12;
constexpr double searchListHeight = 320;

std::vector<AppSearch::App> appsInBar(const AppController& controller) {
    const Layout& layout = controller.values().layout;
    std::vector<AppSearch::App> apps;
    for (PresentApp& app : presentApps(controller.values())) {
        if (canBePlaced(controller, app.bundleID)) {
            const auto clicked = layout.lastClicked.find(app.bundleID);
            apps.push_back({.bundleID = std::move(app.bundleID),
                            .name = std::move(app.name),
                            .lastClicked = clicked == layout.lastClicked.end()
                                               ? std::nullopt
                                               : std::optional(clicked->second)});
        }
    }
    return apps;
}

/// Where an app's icon is, in words.
std::string whereabouts(const Layout& layout, const BundleID& bundleID) {
    if (layout.isWaiting(bundleID)) {
        return "New";
    }
    switch (layout.section(bundleID)) {
        case Section::bar: return "In the bar";
        case Section::tucked: return "Tucked";
        case Section::buried: break;
    }
    return "Buried";
}

}  // namespace

SearchController::SearchController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts), broom_(broom), panel_(parts.ports.surfaces, Surfaces::Kind::search) {}

void SearchController::show(const std::string& typed) {
    typed_ = typed;
    trouble_.clear();
    opening_.reset();
    gather();
    if (panel_.isOpen()) {
        panel_.update(content());
        return;
    }
    const auto place = broom_.placeBelow(searchGapBelowBar);
    if (!place) {
        return;  // there is no display
    }
    panel_.open({.place = place,
                 .content = content(),
                 .ignoresPress = [this](Point point) { return broom_.holdsUpwards(point); }},
                parts_.controller.observe([this] { refresh(); }));
}

void SearchController::gather() {
    auto apps = appsInBar(parts_.controller);
    if (apps != apps_) {
        apps_ = std::move(apps);
        search_ = AppSearch(apps_);
    }
    find();
}

void SearchController::find() {
    found_ = search_.find(typed_);
}

void SearchController::refresh() {
    gather();
    panel_.update(content());
}

void SearchController::open(const BundleID& bundleID) {
    const auto app = std::ranges::find(apps_, bundleID, &AppSearch::App::bundleID);
    if (app == apps_.end()) {
        return;
    }
    trouble_.clear();
    opening_ = std::make_shared<const AppSearch::App>(*app);
    parts_.controller.open(bundleID, [this, opening = std::weak_ptr(opening_)](ItemOpener::Press press) {
        if (const auto opened = opening.lock()) {
            pressed(*opened, press);
        }
    });
}

void SearchController::pressed(const AppSearch::App& app, ItemOpener::Press press) {
    if (press == ItemOpener::Press::menuOpens) {
        close();
        return;
    }
    trouble_ =
        app.name + (press == ItemOpener::Press::notRunning ? " isn't running any more." : " doesn't answer.");
    parts_.ports.surfaces.announce(trouble_);
    refresh();
}

view::Node SearchController::content() {
    const Layout& layout = parts_.controller.values().layout;
    std::vector<view::Node> rows;
    for (const AppSearch::App& app : found_) {
        const std::string& id = app.bundleID;
        rows.push_back(view::row(
            "app:" + id, {{.id = "icon:" + id, .content = view::AppIcon{.bundleID = id, .points = 20}},
                          view::button("open:" + id, {.title = app.name, .press = [this, id] { open(id); }}),
                          view::spacer("gap:" + id),
                          view::explanation("where:" + id, whereabouts(layout, id))}));
    }
    if (rows.empty()) {
        rows.push_back(view::explanation("none", apps_.empty() ? whyNoApps(parts_.controller.values())
                                                               : "No app in the menu bar has that name."));
    }
    std::vector<view::Node> children{
        {.id = "list", .content = view::Scroll{.height = searchListHeight, .children = std::move(rows)}}};
    if (!trouble_.empty()) {
        children.push_back(view::text("trouble", trouble_));
    }
    return {.id = "search",
            .label = "Search the menu bar",
            .width = searchWidth,
            .content = view::Stack{.padding = searchPadding, .children = std::move(children)}};
}

}  // namespace velko
