#include "Velko/Settings/ListedApps.h"

#include <algorithm>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

std::string folded(std::string name) {
    for (char& c : name) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return name;
}

/// Whether Velko knows what the menu bar holds.
bool seesMenuBar(const AppValues& values) {
    return values.inventoryLoaded && !values.problems.trustMissing && !values.problems.engineUnavailable;
}

bool comesBefore(const ListedApp& left, const ListedApp& right) {
    return std::pair(folded(left.name), left.bundleID) < std::pair(folded(right.name), right.bundleID);
}

/// Chooses the apps and finds out what there is to say about each.
class Listing final {
 public:
    Listing(const AppController& controller, const Workspace& workspace, std::optional<Section> section)
        : controller_(controller),
          values_(controller.values()),
          section_(section),
          isSeen_(seesMenuBar(values_)),
          names_(values_, workspace),
          waiting_(values_.layout.inbox.begin(), values_.layout.inbox.end()) {}

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
        std::ranges::sort(listed_.apps, comesBefore);
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
        return !section_ || section == *section_;
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
        if (!isWanted(bundleID)) {
            return;
        }
        if (names_.isRunning(bundleID)) {
            keep({.bundleID = bundleID,
                  .name = names_.of(bundleID),
                  .presence = isSeen_ ? Presence::runningWithoutIcon : Presence::unknown});
        } else if (atRest_ < ListedApps::mostAtRest) {
            ++atRest_;
            keep({.bundleID = bundleID, .name = names_.of(bundleID), .presence = Presence::notRunning});
        } else {
            ++listed_.atRestLeftOut;
        }
    }

    void keep(ListedApp app) {
        app.section = values_.layout.section(app.bundleID);
        app.isWaiting = waiting_.contains(app.bundleID);
        app.isKept = values_.layout.alwaysKeep.contains(app.bundleID);
        listed_.apps.push_back(std::move(app));
    }

    const AppController& controller_;
    const AppValues& values_;
    std::optional<Section> section_;
    bool isSeen_;
    AppNames names_;
    BundleIDs waiting_;
    std::size_t atRest_ = 0;
    ListedApps listed_;
};

}  // namespace

ListedApps listedApps(const AppController& controller, const Workspace& workspace,
                      std::optional<Section> section) {
    return Listing(controller, workspace, section).list();
}

}  // namespace velko
