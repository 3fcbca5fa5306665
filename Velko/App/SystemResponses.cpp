#include "Velko/App/SystemResponses.h"

#include <optional>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/App/Visibility.h"
#include "Velko/Flows/Flows.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

namespace {

BundleIDs ownersOf(const std::vector<MenuBarItem>& items) {
    BundleIDs owners;
    for (const MenuBarItem& item : items) {
        owners.insert(item.bundleID);
    }
    return owners;
}

}  // namespace

void SystemResponses::handleSystemEvent(const std::string& reason, bool light) {
    parts_.log.log("system", reason);
    if (!light) {
        Calendar::rereadZone();
        parts_.flows.autopilot.heedClock();
        parts_.flows.presenting.reconsider();
    }
    if (parts_.host.values().problems.engineUnavailable) {
        return;
    }
    if (!light) {
        parts_.visibility.lookAtDisplay();
        parts_.host.apply({.reason = reason, .force = !parts_.engine.current().isShowAll()});
    }
    if (!parts_.flows.trust.check()) {
        return;
    }
    if (!light) {
        parts_.flows.clicks.listen();
        parts_.flows.frontMenus.readAgain();
    }
    parts_.flows.scan.request(light ? ScanDepth::light : ScanDepth::full);
    if (reason.contains("launched")) {
        parts_.flows.scan.followLaunch();
    }
}

void SystemResponses::trustChanged(bool trusted) {
    parts_.host.setHealth(&HealthFacts::trustMissing, !trusted);
    if (trusted) {
        parts_.log.log("app", "Accessibility granted");
        parts_.surfaces.announce("Velko has its permission.");
        parts_.flows.scan.request(ScanDepth::full);
        parts_.flows.clicks.listen();
        parts_.host.apply({.reason = "Accessibility granted"});
    } else {
        parts_.log.log("app", "Accessibility taken away. Hiding nothing until it is granted again.");
        parts_.surfaces.announce(std::string(describe(Health::Kind::needsAccessibility)));
        parts_.flows.scan.cancel();
        parts_.flows.clicks.stop();
        parts_.host.apply({.reason = "Accessibility missing"});
    }
}

KnownBar SystemResponses::knownBar(std::optional<Rect> broom) const {
    KnownBar bar{.broom = broom};
    for (const MenuBarItem& item : parts_.host.values().items) {
        bar.icons.push_back(
            {.pid = item.pid, .frame = item.frame, .shows = !parts_.engine.current().hides(item.bundleID)});
    }
    return bar;
}

void SystemResponses::rescanIfQuiet() {
    if (!parts_.flows.trust.check()) {
        return;
    }
    // The system may grant the tap later than the permission, or have made it deaf.
    parts_.flows.clicks.listen();
    if (parts_.flows.scan.isQuiet()) {
        parts_.flows.scan.request(ScanDepth::light);
    }
}

void SystemResponses::accept(std::vector<MenuBarItem> items, ScanDepth depth) {
    if (parts_.host.values().problems.trustMissing || !parts_.flows.trust.check()) {
        return;  // without the permission a scan finds nothing, which says nothing about the menu bar
    }
    const BundleIDs present = ownersOf(items);
    const bool isLight = depth == ScanDepth::light;
    const bool isSame = present == parts_.visibility.present();
    const bool isNews = !isSame || !parts_.host.values().inventoryLoaded;
    parts_.host.set(&AppValues::iconWidths, MenuBarRoom::updated(parts_.host.values().iconWidths, items));
    parts_.host.set(&AppValues::items, std::move(items));
    parts_.host.set(&AppValues::inventoryLoaded, true);
    parts_.visibility.setPresent(present);
    if (!isLight) {
        parts_.visibility.lookForPlaces();
    }
    parts_.flows.newcomers.letAbsentGo(present, parts_.visibility.ownBundleID());
    if (isLight && !isNews) {
        parts_.visibility.tellChange();  // the broom may have moved
        return;
    }
    if (!isSame) {
        parts_.log.log("inventory", std::to_string(present.size()) + " apps with icons" +
                                        (isLight ? " (light rescan)" : "") + ": " + joined(present));
    }
    parts_.flows.newcomers.admit(present, parts_.visibility.ownBundleID());
    if (parts_.host.values().usage.empty()) {
        parts_.flows.usage.sampleNow();
    }
    parts_.host.apply({.reason = "inventory"});
}

}  // namespace velko
