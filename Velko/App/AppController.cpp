#include "Velko/App/AppController.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "Velko/App/Joined.h"
#include "Velko/App/Log.h"
#include "Velko/Flows/RevealStyleChoice.h"
#include "Velko/Ports/LoginItem.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

using Depth = InventoryScan::Depth;

namespace {

BundleIDs ownersOf(const std::vector<MenuBarItem>& items) {
    BundleIDs owners;
    for (const MenuBarItem& item : items) {
        owners.insert(item.bundleID);
    }
    return owners;
}

}  // namespace

AppController::AppController(Parts parts)
    : platform_(parts.platform),
      ports_(parts.ports),
      log_(parts.log),
      info_(std::move(parts.info)),
      store_(std::move(parts.store)),
      notices_(platform_.mainThread),
      engine_(std::move(parts.engine)),
      saving_(*this, platform_.mainThread, log_, store_),
      scan_(
          platform_, [this] { return values_.items; },
          [this](std::vector<MenuBarItem> items, Depth depth) { accept(std::move(items), depth); },
          [this] { trustWatch_.check(); }),
      autoTuck_(*this, platform_, ports_.surfaces.surface(Surfaces::Kind::shelf),
                [this] { handle(RevealEvent::autoTuck()); }),
      shelfClosing_(platform_.mainThread),
      showMe_(*this, platform_, log_),
      opening_(platform_, log_, [this](const RevealEvent& event) { handle(event); }),
      popOut_(*this, platform_, log_),
      transfer_(*this, ports_.dialogs, log_, [this] { layoutReplaced("import"); }),
      trustWatch_(*this, platform_, [this](bool trusted) { trustChanged(trusted); }),
      usageSampling_(*this, platform_, [this] { rescanIfQuiet(); }),
      autopilot_(*this, platform_, log_, [this](bool offered) { note_.suggestionsChecked(offered); }),
      changeWatch_(*this, platform_, [this](const BundleID& bundleID) { popOut_.begin(bundleID); }),
      liveActivity_(*this, platform_, log_),
      note_(*this, autopilot_),
      newcomers_(*this, platform_.mainThread, log_, note_),
      preferences_(*this, log_, ports_.loginItem,
                   {.popOut = popOut_,
                    .liveActivity = liveActivity_,
                    .autopilot = autopilot_,
                    .revealChanged = [this] { setState(values_.state); }}) {}

void AppController::requireMainThread() const {
    if (!platform_.mainThread.isCurrent()) {
        std::fputs("Velko's controller was called off the main thread.\n", stderr);
        std::abort();
    }
}

// Start and quit

void AppController::start() {
    requireMainThread();
    log_.log("app", "Velko " + info_.version + " starting on macOS " + info_.systemVersion);
    log_.log("app", "launch at login " + std::string(describe(ports_.loginItem.status())));
    if (!info_.bundlePath.starts_with("/Applications/")) {
        log_.log("app", "WARNING: running from " + info_.bundlePath +
                            ". Velko's own icon may hide; install to /Applications.");
    }
    loadLayout();
    set(&AppValues::activeStyle, chooseRevealStyle(platform_, values_.layout.reveal));
    systemEvents_.emplace(platform_, [this](const SystemEvents::Kind& event) { handleSystemEvent(event); });
    clickHistory_.emplace(
        platform_, [this] { return knownBar(); }, [this](const BundleID& bundleID) { recordClick(bundleID); },
        [this](const ClickTapEvent& event) {
            if (onPress) {
                onPress(event);
            }
        });
    if (!engine_->isAvailable()) {
        setHealth(&HealthFacts::engineUnavailable, true);
        log_.log("engine", "UNAVAILABLE: not supported on this macOS build. Hiding nothing.\n" +
                               engineProbeReport(platform_));
        return;
    }
    startBackgroundLoops();
    if (trustWatch_.holds()) {
        requestScan(Depth::full);
        watchClicks();
        return;
    }
    setHealth(&HealthFacts::trustMissing, true);
    log_.log("app", "Accessibility not granted yet. Hiding nothing until it is.");
    apply({.reason = "Accessibility missing"});
}

void AppController::startBackgroundLoops() {
    trustWatch_.start();
    usageSampling_.start();
    autopilot_.start();
    changeWatch_.start();
    liveActivity_.start();
}

void AppController::quit() {
    requireMainThread();
    trustWatch_.stop();
    usageSampling_.stop();
    autopilot_.stop();
    changeWatch_.stop();
    liveActivity_.stop();
    autoTuck_.cancel();
    showMe_.cancel();
    popOut_.stop();
    transfer_.cancel();
    scan_.cancel();
    systemEvents_.reset();
    iconWatch_.reset();
    opening_.cancel();
    clickHistory_.reset();
    saving_.finish();
    engine_->showAll();
    log_.log("app", "quitting: everything shown");
}

// What the system tells

void AppController::handleSystemEvent(const SystemEvents::Kind& event) {
    log_.log("system", event.reason);
    const bool isEnvironment = event.scope == SystemEvents::Kind::Scope::environment;
    if (isEnvironment) {
        Calendar::rereadZone();
        autopilot_.heedClock();
    }
    if (values_.problems.engineUnavailable) {
        return;
    }
    if (isEnvironment) {
        apply({.reason = event.reason, .force = !engine_->current().isShowAll()});
    }
    if (!trustWatch_.check()) {
        return;
    }
    if (isEnvironment) {
        watchClicks();
    }
    requestScan(isEnvironment ? Depth::full : Depth::light);
    if (event.reason.contains("launched")) {
        scan_.followLaunch();
    }
}

void AppController::trustChanged(bool trusted) {
    setHealth(&HealthFacts::trustMissing, !trusted);
    if (trusted) {
        log_.log("app", "Accessibility granted");
        ports_.surfaces.announce("Velko has its permission.");
        requestScan(Depth::full);
        watchClicks();
        apply({.reason = "Accessibility granted"});
    } else {
        log_.log("app", "Accessibility taken away. Hiding nothing until it is granted again.");
        ports_.surfaces.announce("Velko needs permission to tidy your menu bar.");
        scan_.cancel();
        if (clickHistory_) {
            clickHistory_->stop();
        }
        apply({.reason = "Accessibility missing"});
    }
}

/// Listens for clicks, if nobody does. The system is only asked once the permission is certain: without it,
/// it asks the user for another one.
void AppController::watchClicks() {
    if (!clickHistory_ || clickHistory_->isRunning()) {
        return;
    }
    trustWatch_.prove([this] {
        clickHistory_->start();
        if (clickHistory_->isRunning()) {
            autopilot_.clicksAreWatched();
        }
    });
}

/// What is known of the menu bar by the last scan.
KnownBar AppController::knownBar() const {
    KnownBar bar{.broom = broomFrame ? broomFrame() : Rect{}};
    for (const MenuBarItem& item : values_.items) {
        bar.icons.push_back(
            {.pid = item.pid, .frame = item.frame, .shows = !engine_->current().hides(item.bundleID)});
    }
    return bar;
}

void AppController::recordClick(const BundleID& bundleID) {
    const Date now = floorToSeconds(platform_.mainThread.date());
    edit(Saving::soon, [&](Layout& layout) { layout.recordClick(bundleID, now, {}); });
}

// Scans

void AppController::rescanIfQuiet() {
    if (!trustWatch_.check()) {
        return;
    }
    watchClicks();  // the system may grant the tap later than the permission, or have made it deaf
    if (scan_.isQuiet()) {
        requestScan(Depth::light);
    }
}

void AppController::accept(std::vector<MenuBarItem> items, Depth depth) {
    if (values_.problems.trustMissing || !trustWatch_.check()) {
        return;  // without the permission a scan finds nothing, which says nothing about the menu bar
    }
    BundleIDs present = ownersOf(items);
    const bool isLight = depth == Depth::light;
    const bool isSame = present == present_;
    const bool isNews = !isSame || !values_.inventoryLoaded;
    present_ = std::move(present);
    set(&AppValues::items, std::move(items));
    set(&AppValues::inventoryLoaded, true);
    refreshTidiedCount();
    if (isLight && !isNews) {
        tellChange();  // the broom may have moved
        return;
    }
    if (!isSame) {
        log_.log("inventory", std::to_string(present_.size()) + " apps with icons" +
                                  (isLight ? " (light rescan)" : "") + ": " + joined(present_));
    }
    newcomers_.admit(present_, info_.bundleID);
    if (values_.usage.empty()) {
        usageSampling_.sampleNow();
    }
    apply({.reason = "inventory"});
}

// For people who look under the hood

void AppController::toggleIconWatch() {
    if (!iconWatch_) {
        iconWatch_.emplace(platform_, [this](const std::string& line) { log_.log("debug", line); });
    }
    if (iconWatch_->isRunning()) {
        iconWatch_->stop();
    } else {
        iconWatch_->start();
    }
}

Subscription AppController::observe(std::function<void()> handler) {
    requireMainThread();
    return notices_.observe(std::move(handler));
}

}  // namespace velko
