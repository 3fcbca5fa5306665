#include "Velko/Settings/ListedApps.h"

#include <algorithm>
#include <map>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/AppNames.h"
#include "Velko/Apps/PresentApps.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

/// The apps that run, by identifier, with their names.
std::map<BundleID, std::string> runningApps(const Workspace& workspace) {
    std::map<BundleID, std::string> running;
    for (const RunningApplication& app : workspace.runningApplications()) {
        if (app.bundleID) {
            running.emplace(*app.bundleID, app.localizedName.value_or(*app.bundleID));
        }
    }
    return running;
}

std::string folded(std::string name) {
    for (char& c : name) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return name;
}

/// Whether the items say what the menu bar holds.
bool seesMenuBar(const AppValues& values) {
    return values.inventoryLoaded && !values.problems.trustMissing && !values.problems.engineUnavailable;
}

bool comesBefore(const ListedApp& left, const ListedApp& right) {
    return std::pair(folded(left.name), left.bundleID) < std::pair(folded(right.name), right.bundleID);
}

/// Chooses the apps and learns what there is to say of each.
class Listing final {
 public:
    Listing(const AppController& controller, const Workspace& workspace, std::optional<Section> section)
        : controller_(controller),
          values_(controller.values()),
          workspace_(workspace),
          section_(section),
          isSeen_(seesMenuBar(values_)),
          running_(runningApps(workspace)),
          waiting_(values_.layout.inbox.begin(), values_.layout.inbox.end()) {}

    ListedApps list() && {
        BundleIDs present;
        for (const PresentApp& app : presentApps(values_)) {
            present.insert(app.bundleID);
            const auto unseen = running_.contains(app.bundleID) ? Presence::unknown : Presence::notRunning;
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

    /// Counts an app; whether it is one of those asked for.
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
        const auto found = running_.find(bundleID);
        if (found != running_.end()) {
            keep({.bundleID = bundleID,
                  .name = found->second,
                  .presence = isSeen_ ? Presence::runningWithoutIcon : Presence::unknown});
        } else if (atRest_ < ListedApps::mostAtRest) {
            ++atRest_;
            keep({.bundleID = bundleID,
                  .name = nameAtRest(workspace_, bundleID),
                  .presence = Presence::notRunning});
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
    const Workspace& workspace_;
    std::optional<Section> section_;
    bool isSeen_;
    std::map<BundleID, std::string> running_;
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
