#include "Velko/Settings/AppList.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <numeric>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/ManagedWords.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Apps/UndoLine.h"
#include "Velko/Settings/AppRow.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

namespace {

constexpr double appListHeight = 330;  // points
constexpr double leastAppListHeight = 200;
constexpr std::array filterTitles{"Bar", "Tucked", "Buried"};

std::string rowOf(const BundleID& bundleID) {
    return "app:" + bundleID;
}

}  // namespace

void AppList::opened() {
    search_.clear();
    selected_.clear();
    staying_.clear();
    installed_.clear();
    historyBefore_ = parts_.controller.values().history.revision();
}

void AppList::pointTo(const BundleID& bundleID) {
    search_.clear();
    if (section_ != parts_.controller.values().layout.section(bundleID)) {
        section_.reset();  // the list would lack it
    }
    select({rowOf(bundleID)});
}

void AppList::look() {
    listed_ = listedApps(parts_.controller, parts_.platform.workspace,
                         {.section = section_,
                          .staying = staying_,
                          .search = search_,
                          .order = order_,
                          .now = floorToSeconds(parts_.platform.mainThread.date()),
                          .installed = &installed_});
    view::RowIDs rows;
    for (const ListedApp& app : listed_.apps) {
        rows.insert(rowOf(app.bundleID));
        if (section_) {
            staying_.insert(app.bundleID);
        }
    }
    std::erase_if(selected_, [&](const std::string& row) { return !rows.contains(row); });
}

void AppList::select(const view::RowIDs& rows) {
    selected_ = rows;
    changed_();
}

void AppList::search(const std::string& text) {
    search_ = text;
    changed_();
    announcement_.typed(search_, listed_.apps.size());
}

std::vector<ListedApp> AppList::chosen(const view::RowIDs& rows) const {
    std::vector<ListedApp> apps;
    std::ranges::copy_if(listed_.apps, std::back_inserter(apps),
                         [&](const ListedApp& app) { return rows.contains(rowOf(app.bundleID)); });
    return apps;
}

std::vector<view::Node> AppList::nodes() {
    look();
    const bool isSetUp = parts_.controller.values().layout.hasCompletedSetup;
    std::vector<view::Node> nodes{
        view::row("sorting",
                  {filterPicker(), view::spacer("sorting:gap"),
                   view::button("sort-again", {.title = isSetUp ? "Sort Again…" : "Finish Setup…",
                                               .press = [&host = parts_.host] { host.onResort(); }})}),
        searchRow(), selectionRow(), list()};
    if (auto row = undoLine(parts_.controller, historyBefore_)) {
        nodes.push_back(*std::move(row));
    }
    if (auto row = goneRow()) {
        nodes.push_back(*std::move(row));
    }
    return nodes;
}

view::Node AppList::filterPicker() {
    const auto all = std::accumulate(listed_.counts.begin(), listed_.counts.end(), std::size_t{0});
    std::vector<std::string> options{"All " + std::to_string(all)};
    for (const Section section : allSections) {
        options.push_back(std::string(filterTitles.at(static_cast<std::size_t>(section))) + " " +
                          std::to_string(listed_.count(section)));
    }
    return {.id = "filter",
            .label = "Which apps are listed",
            .content = view::Picker{.options = std::move(options),
                                    .selected = section_ ? static_cast<std::size_t>(*section_) + 1 : 0,
                                    .style = view::Picker::Style::segmented,
                                    .choose = [this](std::size_t index) {
                                        section_ = index == 0 ? std::nullopt
                                                              : std::optional(allSections.at(index - 1));
                                        staying_.clear();
                                        changed_();
                                    }}};
}

view::Node AppList::searchRow() {
    constexpr double appSearchWidth = 260;
    view::Node field{
        .id = "search",
        .label = "Search apps",
        .width = appSearchWidth,
        .content = view::SearchField{.text = search_,
                                     .placeholder = "Search",
                                     .drives = "apps",
                                     .change = [this](const std::string& text) { search(text); }}};
    view::Node order{.id = "order",
                     .label = "Sort by",
                     .content = view::Picker{.options = {"By Name", "By Last Click", "By Cost"},
                                             .selected = static_cast<std::size_t>(order_),
                                             .choose = [this](std::size_t index) {
                                                 order_ = static_cast<AppOrder>(index);
                                                 changed_();
                                             }}};
    return view::row("finding", {std::move(field), view::spacer("finding:gap"), std::move(order)});
}

view::Node AppList::list() {
    std::vector<view::Node> rows;
    rows.reserve(listed_.apps.size() + 1);
    for (const ListedApp& app : listed_.apps) {
        rows.push_back(AppRow::make(parts_, app));
    }
    if (listed_.atRestLeftOut > 0) {
        rows.push_back(view::explanation(
            "apps:more", "And " + std::to_string(listed_.atRestLeftOut) + " more that aren't running."));
        rows.back().isEnabled = false;
    }
    if (rows.empty()) {
        rows.push_back(view::text("apps:empty", whyNoneIsListed()));
        rows.back().isEnabled = false;
    }
    return {.id = "apps",
            .label = "Apps",
            .minHeight = leastAppListHeight,
            .content = view::List{.selection = view::List::Selection::several,
                                  .selected = selected_,
                                  .height = appListHeight,
                                  .grows = true,
                                  .children = std::move(rows),
                                  .select = [this](const view::RowIDs& selected) { select(selected); },
                                  .activate =
                                      [this](const std::string& row) {
                                          for (const ListedApp& app : chosen({row})) {
                                              AppRow::showOrStop(parts_, app);
                                          }
                                      },
                                  .menu =
                                      [this](const view::RowIDs& about) {
                                          return AppRow::contextMenu(parts_, chosen(about));
                                      }}};
}

std::string AppList::whyNoneIsListed() const {
    if (!search_.empty()) {
        return "No app here is called that.";
    }
    if (!section_) {
        return whyNoApps(parts_.controller.values());
    }
    switch (*section_) {
        case Section::bar: return "No app is meant to stay in the bar.";
        case Section::tucked: return "No app is tucked.";
        case Section::buried: break;
    }
    return "No app is buried.";
}

view::Node AppList::countRow() const {
    const std::size_t count = listed_.apps.size();
    std::string words;
    if (!search_.empty()) {
        words = appsInWords(count) + " found. ";
    }
    words += count < 2 ? "" : "Select several to place them together.";
    return view::explanation("selected:none", std::move(words));
}

/// Places all selected apps at once.
view::Node AppList::selectionRow() {
    constexpr double rowHeight = 28;
    const auto row = [](std::vector<view::Node> children) {
        view::Node node = view::row("selected", std::move(children));
        node.minHeight = rowHeight;
        return node;
    };
    const std::vector<ListedApp> apps = chosen(selected_);
    if (apps.size() < 2) {
        return row({countRow(), view::spacer("selected:gap")});
    }
    BundleIDs ids;
    BundleIDs notRunning;
    for (const ListedApp& app : apps) {
        ids.insert(app.bundleID);
        if (app.canBeForgotten()) {
            notRunning.insert(app.bundleID);
        }
    }
    const bool areTogether = std::ranges::all_of(
        apps, [&](const ListedApp& app) { return app.section == apps.front().section && !app.isWaiting; });
    AppController& controller = parts_.controller;
    const auto managed = static_cast<std::size_t>(std::ranges::count_if(apps, &ListedApp::isManaged));
    view::Node places{
        .id = "place-selected",
        .label = "Where the selected apps go",
        .help = managed == apps.size() ? managedInWords : "",
        .isEnabled = managed < apps.size(),
        .content = view::Picker{
            .options = {filterTitles.begin(), filterTitles.end()},
            .selected = areTogether ? static_cast<std::size_t>(apps.front().section) : view::Picker::nothing,
            .style = view::Picker::Style::segmented,
            .choose = [&controller,
                       ids](std::size_t index) { controller.place(ids, allSections.at(index)); }}};
    std::vector<view::Node> children{
        view::text("selected:count", std::to_string(apps.size()) + " apps selected")};
    if (managed > 0) {
        children.push_back(
            view::explanation("selected:managed", std::to_string(managed) + " managed by your organisation"));
    }
    children.push_back(view::spacer("selected:gap"));
    if (!notRunning.empty()) {
        children.push_back(view::button(
            "forget-selected", {.title = "Forget " + std::to_string(notRunning.size()),
                                .press = [&controller, notRunning] { controller.forget(notRunning); }}));
        children.back().label = "Forget the selected apps that aren't running";
        children.back().help = "Forgets those of them that aren't running";
    }
    children.push_back(std::move(places));
    return row(std::move(children));
}

/// Apps that are gone for good would otherwise stay in the layout for ever.
std::optional<view::Node> AppList::goneRow() {
    const std::size_t count = listed_.gone.size();
    if (count == 0) {
        return std::nullopt;
    }
    return view::row(
        "gone", {view::explanation("gone:what",
                                   count == 1 ? "1 app isn't on this Mac any more."
                                              : std::to_string(count) + " apps aren't on this Mac any more."),
                 view::button("forget-gone", {.title = count == 1 ? "Forget It" : "Forget Them",
                                              .style = view::Button::Style::link,
                                              .press = [&controller = parts_.controller,
                                                        gone = listed_.gone] { controller.forget(gone); }})});
}

}  // namespace velko
