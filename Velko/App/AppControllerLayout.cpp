#include <cstddef>
#include <map>
#include <string>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"

// The layout: how it is read, edited, and replaced as a whole.

namespace velko {

void AppController::loadLayout() {
    requireMainThread();
    LayoutSaving::Loaded loaded = saving_.load();
    const bool isMended = values_.problems.layoutUnreadable && !loaded.failure;
    set(&AppValues::layout, std::move(loaded.layout));
    setHealth(&HealthFacts::layoutUnreadable, std::move(loaded.failure));
    autopilot_.heedClock();
    if (clickHistory_ && clickHistory_->isRunning()) {
        autopilot_.clicksAreWatched();
    }
    followSwitches();
    apply({.reason = "layout loaded"});
    if (isMended && !values_.problems.engineUnavailable && trustWatch_.check()) {
        // Which of the apps present are new is only known now.
        requestScan(InventoryScan::Depth::full);
    }
}

/// A layout that came from elsewhere may have other switches; each takes effect as when the user flips it.
void AppController::followSwitches() {
    if (!values_.layout.popOutOnChange) {
        popOut_.endAll();
    }
    liveActivity_.settingChanged();
    setState(values_.state);
}

bool AppController::saveNow() {
    const bool isSaved = saving_.saveNow();
    if (isSaved && values_.problems.layoutUnreadable) {
        loadLayout();  // from now on the file can be read
    }
    return isSaved;
}

bool AppController::edit(Saving saving, const Edit& change) {
    requireMainThread();
    Layout edited = values_.layout;
    change(edited);
    const bool changed = set(&AppValues::layout, std::move(edited));
    if (saving == Saving::now) {
        return saveNow();
    }
    if (!changed || values_.problems.layoutUnreadable) {
        return false;
    }
    if (saving == Saving::nowUnlessBroken) {
        return saveNow();
    }
    scheduleSave();
    return false;
}

void AppController::place(const BundleID& bundleID, Section section) {
    const bool answered = values_.layout.isWaiting(bundleID);
    log_.log("layout",
             bundleID + " -> " + std::string(name(section)) + (answered ? " (new icon answered)" : ""));
    edit(Saving::now, [&](Layout& layout) { layout.place(bundleID, section); });
    popOut_.forget(bundleID);
    apply({.reason = "section changed"});
    autopilot_.settle();
}

void AppController::completeSetup(const std::map<BundleID, Section>& sections) {
    std::map<Section, std::size_t> counts;
    edit(Saving::now, [&](Layout& layout) {
        for (const auto& [bundleID, section] : sections) {
            layout.place(bundleID, section);
            ++counts[section];
        }
        layout.hasCompletedSetup = true;
    });
    log_.log("setup", "sorted: " + std::to_string(counts[Section::bar]) + " in the bar, " +
                          std::to_string(counts[Section::tucked]) + " tucked, " +
                          std::to_string(counts[Section::buried]) + " buried");
    layoutReplaced("setup");
}

void AppController::layoutReplaced(const char* reason) {
    followSwitches();
    apply({.reason = reason});
    autopilot_.settle();
}

}  // namespace velko
