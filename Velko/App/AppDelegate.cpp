#include "Velko/App/AppDelegate.h"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/Diagnostics.h"
#include "Velko/App/Log.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Note/NoteController.h"
#include "Velko/Ports/Desktop.h"
#include "VelkoCore/Sorting/SortSession.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

namespace {

constexpr const char* loginDefaultKey = "didApplyLoginDefault";

std::vector<SortSession::App> appsToSort(const AppController& controller) {
    std::vector<SortSession::App> apps;
    for (const PresentApp& app : presentApps(controller.values())) {
        if (canBePlaced(controller, app.bundleID) && !controller.values().managed.places(app.bundleID)) {
            apps.push_back({.bundleID = app.bundleID, .name = app.name});
        }
    }
    return apps;
}

}  // namespace

AppDelegate::AppDelegate(Parts parts)
    : platform_(parts.controller.platform),
      ports_(parts.controller.ports),
      log_(parts.controller.log),
      propertyLists_(parts.propertyLists),
      homeFolder_(std::move(parts.homeFolder)),
      instance_(platform_, ports_, log_, parts.controller.store, parts.controller.info.bundleID),
      controller_(std::move(parts.controller)),
      move_(ports_, log_, controller_.info().bundlePath),
      faceParts_{
          .controller = controller_, .platform = platform_, .ports = ports_, .log = log_, .host = *this},
      broomFrame_(faceParts_),
      shelf_(faceParts_, broomFrame_),
      search_(faceParts_, broomFrame_),
      message_(faceParts_, broomFrame_),
      setup_(faceParts_),
      commands_(faceParts_) {}

void AppDelegate::didFinishLaunching() {
    instance_.claim([this] { run(); });
}

void AppDelegate::run() {
    isRunning_ = true;
    StatusItemController& statusItem = statusItem_.emplace(faceParts_, broomFrame_);
    hover_.emplace(faceParts_, broomFrame_);
    wireSurfaces(statusItem);
    statusItem.start();
    broomFrame_.start();
    controller_.start();
    sync();
    applyLoginDefault();
    if (const Layout& layout = controller_.values().layout;
        !layout.hasCompletedSetup && !layout.setupPutOff) {
        setupWait_ = platform_.mainThread.after(Timing::setupDelay, [this] { openFirstSetup(); });
    }
    for (const auto& file : instance_.takeFiles()) {
        openFile(file);
    }
    commands_.open();
    for (const auto& address : std::exchange(addresses_, {})) {
        openAddress(address);
    }
}

void AppDelegate::wireSurfaces(StatusItemController& statusItem) {
    changes_ = controller_.observe([this] { sync(); });
    broomMoves_ = broomFrame_.observe([this] { controller_.lookAtDisplay(); });
    // Its neighbours may have moved it.
    controller_.broomFrame = [this] { return broomFrame_.refresh(); };
    controller_.onSearchKey = [this] { search_.isShown() ? search_.close() : openSearch({}); };
    controller_.onPress = [&statusItem](const ClickTapEvent& press) { statusItem.pressed(press); };
    controller_.onChange = [this] {
        broomFrame_.refresh();
        setup_.sync();
        sync();
    };
}

void AppDelegate::sync() {
    if (statusItem_ && hover_) {
        statusItem_->update();
        hover_->sync();
    }
    shelf_.sync();
    message_.sync();
    commands_.sync();
}

void AppDelegate::applyLoginDefault() {
    if (ports_.defaults.isOn(loginDefaultKey)) {
        return;
    }
    ports_.defaults.setOn(loginDefaultKey, true);
    if (ports_.loginItem.status() != LoginItem::Status::enabled) {
        controller_.preferences().setLaunchAtLogin(true);
    }
}

void AppDelegate::willTerminate() {
    setupWait_.cancel();
    commands_.close();
    if (isRunning_) {
        controller_.quit();
    }
    instance_.release();
}

void AppDelegate::reopen(bool hasVisibleWindows) {
    if (isRunning_ && !hasVisibleWindows) {
        openSettings();
    }
}

void AppDelegate::openFile(const std::filesystem::path& file) {
    if (!isRunning_) {
        instance_.keep(file);
        return;
    }
    ports_.application.activate();
    controller_.transfer().offerToImport(file);
}

void AppDelegate::openSearch(const std::string& typed) {
    if (isRunning_) {
        search_.show(typed);
    }
}

void AppDelegate::openAddress(const std::string& address) {
    if (isRunning_) {
        commands_.openAddress(address);
    } else if (addresses_.size() < CommandDesk::mostAddresses) {
        addresses_.push_back(address);
    }
}

// Windows

void AppDelegate::openSettings() {
    settings().show();
}

void AppDelegate::openSetup() {
    setup_.show();
}

void AppDelegate::openFirstSetup() {
    const AppValues& values = controller_.values();
    // It may be complete by now, as by an import. A layout that cannot be read says nothing of it.
    if (!values.layout.hasCompletedSetup && !values.problems.layoutUnreadable) {
        openSetup();
    }
}

SettingsController& AppDelegate::settings() {
    if (!settings_) {
        settings_.emplace(faceParts_, broomFrame_);
    }
    return *settings_;
}

void AppDelegate::openPermission() {
    if (setup_.isShown()) {
        setup_.openPermission();  // with a guide of its own
        return;
    }
    AX::promptForTrust(platform_);  // puts Velko on the list
    AX::openAccessibilitySettings(platform_);
    debugGuide_.emplace(faceParts_, [this] {
        openSettings();
        ports_.application.activate();
        guideEnd_ = platform_.mainThread.after({}, [this] { debugGuide_.reset(); });
    });
    debugGuide_->start();
}

void AppDelegate::onClick() {
    if (hover_) {
        hover_->broomClicked();
    }
}

void AppDelegate::onNote() {
    if (statusItem_) {
        statusItem_->note().show();
    }
}

void AppDelegate::onVisibilityChange() {
    if (setup_.isShown() || !settings_ || !settings_->isShown()) {
        debugGuide_.reset();
    }
    updateActivationPolicy();
}

void AppDelegate::updateActivationPolicy() {
    const bool hasWindow = setup_.isShown() || (settings_ && settings_->isShown());
    const auto wanted = hasWindow ? Application::Policy::regular : Application::Policy::accessory;
    if (wanted == ports_.application.policy()) {
        return;
    }
    ports_.application.setPolicy(wanted);
    if (hasWindow) {
        ports_.application.showDockIcon();
        ports_.application.activate();
    }
}

// The menus at the top of the screen

std::vector<AppMenu::Menu> AppDelegate::menus() {
    return AppMenu::menus(
        {.controller = controller_,
         .openSettings = [this] { openSettings(); },
         .openDocumentation = [this] { platform_.workspace.openURL(controller_.info().documentation); },
         .copyDiagnostics = [this] { copyDiagnostics(); }});
}

void AppDelegate::copyDiagnostics() {
    ports_.pasteboard.setText(diagnostics(controller_, platform_, log_));
    log_.log("app", "diagnostics copied");
    ports_.surfaces.announce("Diagnostics copied. They name no app, no person and no file.");
}

// Sorting

SortSession AppDelegate::makeSession() {
    const Layout& layout = controller_.values().layout;
    if (!layout.hasCompletedSetup) {
        lookForAnotherOrganiser();
    }
    // Before the setup is complete somebody may have sorted in the settings, which counts for more.
    const bool takesOver = !layout.hasCompletedSetup && lastImport_;
    return SortSession({.apps = appsToSort(controller_),
                        .lastClicked = layout.lastClicked,
                        .current = layout.sections,
                        .importSource = "your current layout",
                        .imported = takesOver ? &*lastImport_ : nullptr,
                        .now = floorToSeconds(platform_.mainThread.date()),
                        .calendar = {}});
}

void AppDelegate::lookForAnotherOrganiser() {
    BundleIDs known;
    for (const PresentApp& app : presentApps(controller_.values())) {
        known.insert(app.bundleID);
    }
    lastImport_ =
        Importers::detect({.knownBundleIDs = known, .directory = homeFolder_, .reader = propertyLists_});
    if (lastImport_) {
        log_.log("setup", "found " + lastImport_->source + ": " +
                              std::to_string(lastImport_->sections.size()) + " placements");
    }
}

}  // namespace velko
