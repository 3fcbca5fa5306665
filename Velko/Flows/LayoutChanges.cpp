#include "Velko/Flows/LayoutChanges.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/Apps/ManagedWords.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/PopOut.h"
#include "Velko/Flows/Questions.h"

namespace velko {

LayoutChanges::LayoutChanges(FlowHost& host, const Workspace& workspace, Log& log, Affected affected)
    : host_(host), workspace_(workspace), log_(log), affected_(std::move(affected)) {}

ChangeWords::Apps LayoutChanges::inWords(const BundleIDs& apps) const {
    return {.name = apps.size() == 1 ? AppNames(host_.values(), workspace_).of(*apps.begin()) : "",
            .count = apps.size()};
}

void LayoutChanges::place(const BundleIDs& wanted, Section section) {
    const BundleIDs apps = withoutManaged(host_.values(), wanted, log_);
    if (apps.empty()) {
        return;
    }
    for (const BundleID& bundleID : apps) {
        const bool answered = host_.values().layout.isWaiting(bundleID);
        log_.log("layout",
                 bundleID + " -> " + std::string(name(section)) + (answered ? " (new icon answered)" : ""));
    }
    host_.edit(ChangeWords::placed(inWords(apps), section), [&](Layout& layout) {
        for (const BundleID& bundleID : apps) {
            layout.place(bundleID, section);
        }
    });
    for (const BundleID& bundleID : apps) {
        affected_.popOut.forget(bundleID);
    }
    host_.apply({.reason = "section changed"});
    affected_.autopilot.settle();
}

void LayoutChanges::forget(const BundleIDs& apps) {
    BundleIDs gone;
    std::ranges::copy_if(withoutManaged(host_.values(), apps, log_), std::inserter(gone, gone.end()),
                         [this](const BundleID& bundleID) { return !isPresent(host_.values(), bundleID); });
    if (gone.empty()) {
        return;
    }
    const UndoHistory::Change change = ChangeWords::forgotten(inWords(gone));
    log_.log("layout", "forgot " + joined(gone));
    host_.edit(change, [&](Layout& layout) { layout.forget(gone); });
    host_.apply({.reason = "forgotten"});
    affected_.autopilot.settle();
}

bool LayoutChanges::go(bool (UndoHistory::*way)(Layout&), const char* word) {
    UndoHistory history = host_.values().history;
    const UndoHistory::Change* next = way == &UndoHistory::undo ? history.undoable() : history.redoable();
    if (next == nullptr || host_.values().problems.layoutUnreadable) {
        return false;
    }
    const std::string title = next->title;
    host_.edit(Saving::now, [&](Layout& layout) { (history.*way)(layout); });
    host_.set(&AppValues::history, std::move(history));
    log_.log("layout", std::string(word) + title);
    affected_.replaced("undo");
    return true;
}

bool LayoutChanges::undo() {
    return go(&UndoHistory::undo, "undone: ");
}

bool LayoutChanges::redo() {
    return go(&UndoHistory::redo, "done again: ");
}

void LayoutChanges::sort(const std::map<BundleID, Section>& sections) {
    std::map<Section, std::size_t> counts;
    host_.edit(ChangeWords::sorted(), [&](Layout& layout) {
        for (const auto& [bundleID, section] : sections) {
            if (!host_.values().managed.places(bundleID)) {
                layout.place(bundleID, section);
                ++counts[section];
            }
        }
        layout.hasCompletedSetup = true;
    });
    log_.log("setup", "sorted: " + std::to_string(counts[Section::bar]) + " in the bar, " +
                          std::to_string(counts[Section::tucked]) + " tucked, " +
                          std::to_string(counts[Section::buried]) + " buried");
    affected_.replaced("setup");
}

}  // namespace velko
