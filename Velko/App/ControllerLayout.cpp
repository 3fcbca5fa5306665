#include <map>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"
#include "Velko/Flows/Flows.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoEngine/Ports/MainThread.h"

// What the controller does with the layout.

namespace velko {

void AppController::loadLayout() {
    managed_.read();
    keeping_.load();
}

/// It is about another layout.
void AppController::forgetHistory() {
    UndoHistory history = values_.history;
    history.clear();
    set(&AppValues::history, std::move(history));
}

void AppController::managedChanged() {
    if (!flows_) {
        return;
    }
    keeping_.layManagedOver();
    forgetHistory();
    for (const BundleID& app : BundleIDs(values_.poppedOut)) {
        if (values_.managed.places(app) || values_.layout.neverPopOut.contains(app)) {
            flows_->popOut.forget(app);
        }
    }
    layoutReplaced("managed");
}

void AppController::layoutLoaded(bool isMended) {
    forgetHistory();
    flows_->autopilot.heedClock();
    if (flows_->clicks.isListening()) {
        flows_->autopilot.clicksAreWatched();
    }
    followSwitches();
    flows_->keys.follow();
    apply({.reason = "layout loaded"});
    if (isMended && !values_.problems.engineUnavailable && flows_->trust.check()) {
        // Which of the apps present are new is only known now.
        requestScan(ScanDepth::full);
    }
}

/// A layout that came from elsewhere may have other switches; each takes effect as when the user flips it.
void AppController::followSwitches() {
    if (!values_.layout.popOutOnChange) {
        flows_->popOut.endAll();
    }
    flows_->liveActivity.settingChanged();
    flows_->presenting.reconsider();
    visibility_.lookAtDisplay();
    visibility_.setState(values_.state);
}

void AppController::layoutReplaced(const char* reason) {
    followSwitches();
    flows_->keys.takeAll();
    apply({.reason = reason});
    flows_->autopilot.settle();
}

bool AppController::edit(UndoHistory::Change undoable, const Edit& change) {
    const Layout before = values_.layout;
    const bool isSaved = keeping_.edit(Saving::now, change, undoable.cause);
    UndoHistory history = values_.history;
    history.record(std::move(undoable), before, values_.layout);
    set(&AppValues::history, std::move(history));
    return isSaved;
}

void AppController::place(const BundleIDs& apps, Section section) {
    flows_->layoutChanges.place(apps, section);
}

void AppController::forget(const BundleIDs& apps) {
    flows_->layoutChanges.forget(apps);
}

bool AppController::undo() {
    return flows_->layoutChanges.undo();
}

bool AppController::redo() {
    return flows_->layoutChanges.redo();
}

void AppController::completeSetup(const std::map<BundleID, Section>& sections) {
    flows_->layoutChanges.sort(sections);
}

void AppController::putOffSetup() {
    if (!values_.layout.hasCompletedSetup && !values_.layout.setupPutOff) {
        log_.log("setup", "put off");
        edit(Saving::nowUnlessBroken,
             [this](Layout& layout) { layout.setupPutOff = floorToSeconds(platform_.mainThread.date()); });
    }
}

}  // namespace velko
