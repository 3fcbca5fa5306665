#include "Velko/Settings/ListedApps.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/Questions.h"
#include "VelkoCore/Search/AppSearch.h"
#include "VelkoCore/Search/NameOrder.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

/// Whether Velko knows what the menu bar holds.
bool seesMenuBar(const AppValues& values) {
    return values.inventoryLoaded && !values.problems.trustMissing && !values.problems.engineUnavailable;
}

bool isNamedLike(const std::string& search, const std::string& name) {
    if (NameOrder(name).contains(FoldedText::of(search))) {
        return true;
    }
    const auto match = AppSearch::match(search, name);
    return match && *match != NameMatch::subsequence;
}

/// Chooses the apps and finds out what there is to say about each.
class Listing final {
 public:
    Listing(AppController& controller, const Workspace& workspace, const ListedAppsRequest& request)
        : controller_(controller),
          values_(controller.values()),
          request_(request),
          isSeen_(seesMenuBar(values_)),
          workspace_(workspace),
          names_(values_, workspace),
          waiting_(values_.layout.inbox.begin(), values_.layout.inbox.end()) {
        for (TidySuggestion& suggestion : controller.autopilot().suggestions()) {
            suggestions_.emplace(suggestion.bundleID, std::move(suggestion));
        }
    }

    ListedApps list() && {
        BundleIDs present;
        for (const PresentApp& app : presentApps(values_)) {
            present.insert(app.bundleID);
            const auto unseen = names_.isRunning(app.bundleID) ? Presence::unknown : Presence::notRunning;
            add({.bundleID = app.bundleID,
                 .name = app.name,
                 .presence = isSeen_ ? Presence::inMenuBar : unseen});
        }
        for (const auto& [bundleID, section] : values_.layout.sections) {
            if (!present.contains(bundleID)) {
                addAbsent(bundleID);
            }
        }
        order();
        return std::move(listed_);
    }

 private:
    using Presence = ListedApp::Presence;

    /// Counts an app. Returns whether it belongs to the section that is listed.
    bool isWanted(const BundleID& bundleID) {
        if (!canBePlaced(controller_, bundleID)) {
            return false;
        }
        const Section section = values_.layout.section(bundleID);
        ++listed_.counts.at(static_cast<std::size_t>(section));
        return !request_.section || section == *request_.section || request_.staying.contains(bundleID);
    }

    void add(ListedApp app) {
        if (isWanted(app.bundleID)) {
            const auto usage = values_.usage.find(app.bundleID);
            if (usage != values_.usage.end() && app.presence != Presence::notRunning) {
                app.usage = usage->second;
            }
            keep(std::move(app));
        }
    }

    void addAbsent(const BundleID& bundleID) {
        const bool isRunning = names_.isRunning(bundleID);
        const bool isCounted = atRest_ >= ListedApps::mostAtRest && !isRunning;
        // Finding a name costs a search of the disk, so it is done once for each app.
        std::string name = isCounted ? std::string() : names_.of(bundleID);
        const bool isInstalled = isRunning || (isCounted ? isOnThisMac(bundleID) : name != bundleID);
        if (!isInstalled && values_.managed.places(bundleID)) {
            return;  // an organisation places what only some of its Macs have
        }
        if (!isInstalled && canBePlaced(controller_, bundleID)) {
            listed_.gone.insert(bundleID);
        }
        if (!isWanted(bundleID)) {
            return;
        }
        if (isRunning) {
            keep({.bundleID = bundleID,
                  .name = std::move(name),
                  .presence = isSeen_ ? Presence::runningWithoutIcon : Presence::unknown});
        } else if (!isCounted) {
            ++atRest_;
            keep({.bundleID = bundleID,
                  .name = std::move(name),
                  .presence = Presence::notRunning,
                  .isInstalled = isInstalled});
        } else {
            ++listed_.atRestLeftOut;
        }
    }

    [[nodiscard]] bool isOnThisMac(const BundleID& bundleID) const {
        if (request_.installed == nullptr) {
            return true;
        }
        const auto [known, isNew] = request_.installed->try_emplace(bundleID);
        if (isNew) {
            known->second = workspace_.installedName(bundleID).has_value();
        }
        return known->second;
    }

    void keep(ListedApp app) {
        if (!request_.search.empty() && !isNamedLike(request_.search, app.name)) {
            return;
        }
        const Layout& layout = values_.layout;
        app.section = layout.section(app.bundleID);
        app.isManaged = values_.managed.places(app.bundleID);
        app.isWaiting = waiting_.contains(app.bundleID);
        app.isKept = layout.alwaysKeep.contains(app.bundleID);
        app.popsOut = !layout.neverPopOut.contains(app.bundleID);
        app.isQuiet = layout.isQuiet(app.bundleID, request_.now);
        app.lastClicked = entry(layout.lastClicked, app.bundleID);
        app.putOffUntil = entry(layout.autopilot.snoozedUntil, app.bundleID);
        app.suggestion = entry(suggestions_, app.bundleID);
        listed_.apps.push_back(std::move(app));
    }

    template <class Value>
    static std::optional<Value> entry(const std::map<BundleID, Value>& values, const BundleID& bundleID) {
        const auto found = values.find(bundleID);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }

    void order() {
        std::vector<std::string> names;
        names.reserve(listed_.apps.size());
        std::ranges::transform(listed_.apps, std::back_inserter(names), &ListedApp::name);
        const std::vector<std::size_t> places = workspace_.placesOf(names);
        std::vector<std::pair<std::size_t, ListedApp>> apps;
        apps.reserve(listed_.apps.size());
        for (std::size_t index = 0; index < places.size(); ++index) {
            apps.emplace_back(places[index], std::move(listed_.apps[index]));
        }
        std::ranges::sort(apps, [this](const auto& left, const auto& right) {
            if (const auto by = rank(right.second) <=> rank(left.second); by != 0) {
                return by < 0;
            }
            return std::tie(left.first, left.second.bundleID) < std::tie(right.first, right.second.bundleID);
        });
        listed_.apps.clear();
        for (auto& [place, app] : apps) {
            listed_.apps.push_back(std::move(app));
        }
    }

    /// What is greater comes first; equal where only the name counts.
    [[nodiscard]] std::tuple<bool, std::int64_t> rank(const ListedApp& app) const {
        switch (request_.order) {
            case AppOrder::name: break;
            case AppOrder::lastClick:
                return {app.lastClicked.has_value(),
                        app.lastClicked ? app.lastClicked->time_since_epoch().count() : 0};
            case AppOrder::cost:
                return {app.usage && AppHealth::isHeavy(*app.usage),
                        app.usage ? static_cast<std::int64_t>(app.usage->memoryBytes) : -1};
        }
        return {};
    }

    AppController& controller_;
    const AppValues& values_;
    const ListedAppsRequest& request_;
    bool isSeen_;
    const Workspace& workspace_;
    AppNames names_;
    BundleIDs waiting_;
    std::map<BundleID, TidySuggestion> suggestions_;
    std::size_t atRest_ = 0;
    ListedApps listed_;
};

}  // namespace

ListedApps listedApps(AppController& controller, const Workspace& workspace,
                      const ListedAppsRequest& request) {
    return Listing(controller, workspace, request).list();
}

}  // namespace velko
