#include "Velko/Search/SearchController.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Flows/ShowApp.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Timing.h"

namespace velko {

namespace {

// Points
constexpr double searchGapBelowBar = 4;
constexpr double whereaboutsWidth = 60;
constexpr double numberWidth = 24;
constexpr double unnumberedWidth = whereaboutsWidth + 8 + numberWidth;  // in line with the others
constexpr double searchWidth = 400;
constexpr double searchPadding = 12;
constexpr double searchListHeight = 320;

constexpr std::size_t mostNumbered = 9;
constexpr auto rowPrefix = "app:";

std::vector<AppSearch::App> appsInBar(const AppController& controller) {
    const Layout& layout = controller.values().layout;
    std::vector<AppSearch::App> apps;
    for (PresentApp& app : presentApps(controller.values())) {
        if (canBePlaced(controller, app.bundleID)) {
            const auto clicked = layout.lastClicked.find(app.bundleID);
            const auto lastClicked =
                clicked == layout.lastClicked.end() ? std::nullopt : std::optional(clicked->second);
            apps.push_back({.bundleID = std::move(app.bundleID),
                            .name = std::move(app.name),
                            .lastClicked = lastClicked});
        }
    }
    return apps;
}

std::string whereabouts(Section section) {
    switch (section) {
        case Section::bar: return "In the bar";
        case Section::tucked: return "Tucked";
        case Section::buried: break;
    }
    return "Buried";
}

BundleID appOfRow(const std::string& row) {
    return row.starts_with(rowPrefix) ? row.substr(std::string_view(rowPrefix).size()) : BundleID();
}

}  // namespace

SearchController::SearchController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts),
      broom_(broom),
      panel_(parts.ports.surfaces, Surfaces::Kind::search),
      announcement_(parts.platform.mainThread, parts.ports.surfaces) {}

void SearchController::show(const std::string& typed) {
    const auto place = broom_.placeBelow(searchGapBelowBar);
    if (!place) {
        return;  // there is no display
    }
    typed_ = typed;
    selected_.clear();
    trouble_.clear();
    opening_.reset();
    gather();
    if (panel_.isOpen()) {
        update();
        return;
    }
    if (parts_.controller.values().isShelfShown()) {
        parts_.controller.closeShelf(ShelfDismissal::escape);  // it is where the search will be
    }
    wasShelfShown_ = parts_.controller.values().isShelfShown();
    const bool isStill = parts_.ports.surfaces.reducesMotion();
    panel_.open({.place = place,
                 .motion = {.fade = isStill ? Timing::Seconds::zero() : Timing::noteFade},
                 .content = content(),
                 .ignoresPress = [this](Point point) { return broom_.holdsUpwards(point); },
                 .closed =
                     [this] {
                         typed_.clear();
                         announcement_.cancel();
                     }},
                parts_.controller.observe([this] { refresh(); }));
}

/// Takes the apps from the controller's values, and finds those that match.
void SearchController::gather() {
    auto apps = appsInBar(parts_.controller);
    if (apps != apps_) {
        apps_ = std::move(apps);
        search_ = AppSearch(apps_);
    }
    found_ = search_.find(typed_);
    if (std::ranges::find(found_, selected_, &AppSearch::App::bundleID) == found_.end()) {
        selected_ = found_.empty() ? BundleID() : found_.front().bundleID;
    }
}

void SearchController::type(const std::string& text) {
    typed_ = text;
    trouble_.clear();
    found_ = search_.find(typed_);
    selected_ = found_.empty() ? BundleID() : found_.front().bundleID;
    announcement_.found(found_.size(), found_.empty() ? "" : label(found_.front()));
    update();
}

/// The keyboard stays in the field, so a screen reader does not look at the list.
void SearchController::select(const BundleID& bundleID) {
    const auto app = std::ranges::find(found_, bundleID, &AppSearch::App::bundleID);
    if (app != found_.end() && selected_ != bundleID) {
        selected_ = bundleID;
        announcement_.cancel();
        parts_.ports.surfaces.announce(label(*app));
    }
    update();
}

/// One row is always selected, so that Return has something to open.
void SearchController::selectRow(const view::RowIDs& rows) {
    if (!rows.empty()) {
        select(appOfRow(*rows.begin()));
    }
}

bool SearchController::press(const view::KeyPress& key) {
    using Key = view::KeyPress::Key;
    if (key.key == Key::digit && key.command) {
        const auto place = static_cast<std::size_t>(key.digit - 1);
        if (place < std::min(found_.size(), mostNumbered)) {
            open(BundleID(found_[place].bundleID));
        }
        return true;
    }
    if (key.key == Key::escape && key.isPlain()) {
        close();
        return true;
    }
    if (key.key != Key::enter || selected_.empty()) {
        return false;
    }
    if (key.command) {
        openSettings(BundleID(selected_));
    } else if (key.option) {
        showOnly(BundleID(selected_));
    } else {
        open(BundleID(selected_));
    }
    return true;
}

void SearchController::open(const BundleID& bundleID) {
    const auto app = std::ranges::find(apps_, bundleID, &AppSearch::App::bundleID);
    if (app == apps_.end()) {
        return;
    }
    if (tellsWhyKeptIn(bundleID)) {
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
        describe(FailedOpening{.bundleID = app.bundleID, .isRunning = press != ItemOpener::Press::notRunning},
                 AppNames(parts_.controller.values(), parts_.platform.workspace));
    parts_.ports.surfaces.announce(trouble_);
    update();
}

bool SearchController::tellsWhyKeptIn(const BundleID& bundleID) {
    auto why = whyKeptIn(parts_.controller, bundleID, parts_.platform.workspace);
    if (!why) {
        return false;
    }
    trouble_ = *std::move(why);
    parts_.ports.surfaces.announce(trouble_);
    update();
    return true;
}

void SearchController::showOnly(const BundleID& bundleID) {
    if (tellsWhyKeptIn(bundleID)) {
        return;
    }
    close();
    parts_.controller.showMe().start(bundleID);
}

void SearchController::openSettings(const BundleID& bundleID) {
    close();
    parts_.host.onSettingsOf(bundleID);
}

void SearchController::refresh() {
    const bool isShelfShown = parts_.controller.values().isShelfShown();
    if (isShelfShown && !wasShelfShown_) {
        close();  // the shelf is in its place
        return;
    }
    wasShelfShown_ = isShelfShown;
    gather();
    update();
}

// What it shows

std::string SearchController::label(const AppSearch::App& app) const {
    const Layout& layout = parts_.controller.values().layout;
    return app.name + ", " + whereabouts(layout.section(app.bundleID)) +
           (layout.isWaiting(app.bundleID) ? ", New" : "");
}

view::Node SearchController::row(const AppSearch::App& app, std::size_t place) const {
    const Layout& layout = parts_.controller.values().layout;
    const std::string& id = app.bundleID;
    std::vector<view::Node> children{
        {.id = "icon:" + id, .content = view::AppIcon{.bundleID = id, .points = 20}},
        view::text("name:" + id, app.name),
        view::spacer("gap:" + id)};
    if (layout.isWaiting(id)) {
        children.push_back(
            {.id = "new:" + id, .content = view::Text{.text = "New", .style = view::Text::Style::headline}});
    }
    // A long name leaves these their room.
    children.push_back(view::explanation("where:" + id, whereabouts(layout.section(id))));
    children.back().width = place < mostNumbered ? whereaboutsWidth : unnumberedWidth;
    if (place < mostNumbered) {
        children.push_back(view::explanation("number:" + id, "⌘" + std::to_string(place + 1)));
        children.back().width = numberWidth;
    }
    view::Node node = view::row(rowPrefix + id, std::move(children));
    node.label = label(app);
    return node;
}

view::Node SearchController::content() {
    std::vector<view::Node> rows;
    rows.reserve(found_.size());
    for (std::size_t place = 0; place < found_.size(); ++place) {
        rows.push_back(row(found_[place], place));
    }
    std::vector<view::Node> children{
        {.id = "field",
         .content = view::SearchField{.text = typed_,
                                      .placeholder = "Search the menu bar",
                                      .hasFocus = true,
                                      .drives = "list",
                                      .change = [this](const std::string& text) { type(text); },
                                      .key = [this](const view::KeyPress& key) { return press(key); }}}};
    const bool isEmpty = rows.empty();
    children.push_back(
        {.id = "list",
         .label = "Apps in the menu bar",
         .content = view::List{.selected = isEmpty ? view::RowIDs() : view::RowIDs{rowPrefix + selected_},
                               .height = searchListHeight,
                               .children = std::move(rows),
                               .select = [this](const view::RowIDs& chosen) { selectRow(chosen); },
                               .activate = [this](const std::string& row) { open(appOfRow(row)); }}});
    if (isEmpty) {
        children.push_back(view::explanation("none", apps_.empty()
                                                         ? whyNoApps(parts_.controller.values())
                                                         : "No app in the menu bar has that name."));
    }
    if (!trouble_.empty()) {
        children.push_back(view::row("trouble", {{.id = "trouble:mark",
                                                  .content = view::Symbol{.name = "exclamationmark.triangle",
                                                                          .ink = view::Ink::warning}},
                                                 view::text("trouble:what", trouble_)}));
    } else {
        children.push_back(
            view::explanation("keys", "↩ opens the menu. ⌥↩ shows the icon. ⌘↩ opens the settings."));
    }
    return {.id = "search",
            .label = "Search the menu bar",
            .width = searchWidth,
            .content = view::Stack{.padding = searchPadding, .children = std::move(children)}};
}

}  // namespace velko
