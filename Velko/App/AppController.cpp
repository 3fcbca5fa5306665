#include "Velko/App/AppController.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/App/SystemResponses.h"
#include "Velko/Flows/Flows.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

AppController::AppController(Parts parts)
    : platform_(parts.platform),
      ports_(parts.ports),
      log_(parts.log),
      info_(std::move(parts.info)),
      store_(std::move(parts.store)),
      notices_(std::in_place, platform_.mainThread),
      engine_(std::move(parts.engine)),
      keeping_(*this, platform_.mainThread, log_, store_, [this](bool isMended) { layoutLoaded(isMended); }),
      managed_(*this, platform_.mainThread, log_, std::move(parts.managed), [this] { managedChanged(); }),
      visibility_(
          *this,
          {.platform = platform_,
           .log = log_,
           .engine = *engine_,
           .ownBundleID = info_.bundleID,
           .broomFrame = [this] { return broomFrame ? broomFrame() : Inventory::ownItemFrame(platform_); },
           .menusEnd = [this] { return flows_ ? flows_->frontMenus.end() : std::nullopt; },
           .stateSet = [this] { stateSet(); },
           .answered = [this] { tellChange(); }}),
      flows_(makeFlows()),
      responses_(std::make_unique<SystemResponses>(SystemResponses::Parts{.host = *this,
                                                                          .surfaces = ports_.surfaces,
                                                                          .log = log_,
                                                                          .engine = *engine_,
                                                                          .visibility = visibility_,
                                                                          .flows = *flows_})) {}

AppController::~AppController() = default;

std::unique_ptr<Flows> AppController::makeFlows() {
    return std::make_unique<Flows>(
        static_cast<FlowHost&>(*this), platform_, ports_, keeping_.history(), log_,
        Flows::Handlers{
            .reveal = [this](const RevealEvent& event) { handle(event); },
            .revealSettingsChanged = [this] { visibility_.setState(values_.state); },
            .wideDisplaysChanged = [this] { lookAtDisplay(); },
            .scanned = [this](std::vector<MenuBarItem> items,
                              ScanDepth depth) { responses_->accept(std::move(items), depth); },
            .trustChanged = [this](bool trusted) { responses_->trustChanged(trusted); },
            .usageSampled = [this] { responses_->rescanIfQuiet(); },
            .layoutReplaced = [this](const char* reason) { layoutReplaced(reason); },
            .keyPressed = [this](HotKeyAction action) { keyPressed(action); },
            .clicks = {.bar = [this] { return responses_->knownBar(broomFrame ? broomFrame() : Rect{}); },
                       .pressed =
                           [this](const ClickTapEvent& event) {
                               flows_->beat.userIsThere();
                               if (onPress) {
                                   onPress(event);
                               }
                           },
                       .begun = [this] { flows_->autopilot.clicksAreWatched(); }}});
}

// Start and quit

void AppController::start() {
    requireMainThread(platform_.mainThread);
    log_.log("app", "Velko " + info_.version + " starting on macOS " + info_.systemVersion);
    log_.log("app", "launch at login " + std::string(describe(ports_.loginItem.status())));
    if (!info_.isInApplications()) {
        log_.log("app", "WARNING: running from " + info_.bundlePath +
                            ". Velko's own icon may hide; install to /Applications.");
    }
    loadLayout();
    visibility_.chooseStyle();
    flows_->systemEvents.emplace(platform_, [this](const SystemEvents::Kind& event) {
        const bool isLight = event.scope == SystemEvents::Kind::Scope::apps;
        responses_->handleSystemEvent(event.reason, isLight);
        if (!isLight) {
            managed_.look();
        }
    });
    if (!engine_->isAvailable()) {
        setHealth(&HealthFacts::engineUnavailable, true);
        log_.log("engine", "UNAVAILABLE: not supported on this macOS build. Hiding nothing.\n" +
                               engineProbeReport(platform_));
        return;
    }
    managed_.start(flows_->beat);
    flows_->startBackgroundLoops();
    flows_->valuesChanged = observe([this] { flows_->beat.reconsider(); });
    if (flows_->trust.holds()) {
        requestScan(ScanDepth::full);
        flows_->clicks.listen();
        return;
    }
    setHealth(&HealthFacts::trustMissing, true);
    log_.log("app", "Accessibility not granted yet. Hiding nothing until it is.");
    apply({.reason = "Accessibility missing"});
}

void AppController::quit() {
    requireMainThread(platform_.mainThread);
    notices_.reset();
    onChange = nullptr;
    onSearchKey = nullptr;
    flows_.reset();
    responses_.reset();
    keeping_.finish();
    engine_->showAll();
    log_.log("app", "quitting: everything shown");
}

void AppController::requestScan(ScanDepth depth) {
    flows_->scan.request(depth);
}

// What the user does with icons

bool AppController::consumesClick() {
    return visibility_.isClickThatClosedShelf() || flows_->showMe.stop();
}

void AppController::shelfTouched() {
    flows_->autoTuck.touched();
}

void AppController::open(const BundleID& bundleID, std::function<void(ItemOpener::Press)> pressed) {
    if (values_.isPresenting() && engine_->current().hides(bundleID)) {
        log_.log("open", "not while presenting: " + bundleID);
        return;
    }
    flows_->showMe.stop();  // it would keep this app's icon hidden
    const auto* const peek = values_.state.asPeeking();
    if (peek != nullptr && peek->bundleID == bundleID) {
        if (pressed) {
            pressed(ItemOpener::Press::menuOpens);
        }
        return;  // a second press would close the menu that the first one opens
    }
    flows_->clicks.record(bundleID);
    flows_->opening.open(bundleID, std::move(pressed));
}

void AppController::keyPressed(HotKeyAction action) {
    if (action == HotKeyAction::search) {
        if (const auto told = onSearchKey) {
            told();
        }
    } else if (action == HotKeyAction::presenting) {
        presenting().toggle();
    } else if (!consumesClick()) {
        toggle(action == HotKeyAction::toggleWithBuried);
    }
}

void AppController::lookAtDisplay() {
    if (visibility_.lookAtDisplay()) {
        apply({.reason = "wide display"});
    }
}

void AppController::tryAgain() {
    apply({.reason = "try again"});
}

void AppController::stateSet() {
    if (flows_) {
        flows_->autoTuck.rearm();
    }
}

void AppController::tellChange() const {
    if (const auto told = onChange) {  // it may replace itself
        told();
    }
}

void AppController::valueChanged() {
    if (notices_) {
        notices_->note();
    }
}

Subscription AppController::observe(std::function<void()> handler) {
    requireMainThread(platform_.mainThread);
    return notices_ ? notices_->observe(std::move(handler)) : Subscription();
}

// The flows that faces work with

Preferences& AppController::preferences() noexcept {
    return flows_->preferences;
}

AutopilotOffers& AppController::autopilot() noexcept {
    return flows_->autopilot;
}

NoteDeferral& AppController::note() noexcept {
    return flows_->note;
}

ShowMe& AppController::showMe() noexcept {
    return flows_->showMe;
}

LayoutTransfer& AppController::transfer() noexcept {
    return flows_->transfer;
}

EarlierLayouts& AppController::earlierLayouts() noexcept {
    return flows_->earlier;
}

GlobalKeys& AppController::keys() noexcept {
    return flows_->keys;
}

Presenting& AppController::presenting() noexcept {
    return flows_->presenting;
}

void AppController::toggleIconWatch() {
    auto& watch = flows_->iconWatch;
    if (!watch) {
        watch.emplace(platform_, [this](const std::string& line) { log_.log("debug", line); });
    }
    if (watch->isRunning()) {
        watch->stop();
    } else {
        watch->start();
    }
}

bool AppController::isIconWatchRunning() const noexcept {
    const auto& watch = flows_->iconWatch;
    return watch && watch->isRunning();
}

}  // namespace velko
