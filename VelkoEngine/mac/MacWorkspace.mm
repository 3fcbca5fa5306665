#import "VelkoEngine/mac/MacWorkspace.h"

#import <AppKit/AppKit.h>

#include <array>
#include <memory>
#include <utility>

#include "VelkoEngine/mac/Conversions.h"
#import "VelkoEngine/mac/KeyObserver.h"
#include "VelkoEngine/mac/NotificationObserver.h"

namespace velko {

namespace {

RunningApplication portable(NSRunningApplication* application) {
    return {.pid = application.processIdentifier,
            .bundleID = portableIfAny(application.bundleIdentifier),
            .bundlePath = portableIfAny(application.bundleURL.path),
            .localizedName = portableIfAny(application.localizedName)};
}

WorkspaceNotice portable(NSNotification* notification, WorkspaceNotice::Kind kind) {
    NSRunningApplication* application = notification.userInfo[NSWorkspaceApplicationKey];
    // An application that has no process any more gives -1, none at all gives 0.
    const ProcessID pid = application.processIdentifier;
    return {.kind = kind,
            .pid = isReal(pid) ? std::optional(pid) : std::nullopt,
            .bundleID = portableIfAny(application.bundleIdentifier)};
}

}  // namespace

std::vector<RunningApplication> MacWorkspace::runningApplications() const {
    std::vector<RunningApplication> result;
    for (NSRunningApplication* application in [NSWorkspace sharedWorkspace].runningApplications) {
        result.push_back(portable(application));
    }
    return result;
}

std::optional<BundleID> MacWorkspace::bundleID(ProcessID pid) const {
    return portableIfAny([NSRunningApplication runningApplicationWithProcessIdentifier:pid].bundleIdentifier);
}

std::vector<ProcessID> MacWorkspace::pids(const BundleID& bundleID) const {
    std::vector<ProcessID> result;
    NSString* identifier = native(bundleID);
    for (NSRunningApplication* application in
         [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier]) {
        result.push_back(application.processIdentifier);
    }
    return result;
}

std::optional<std::string> MacWorkspace::installedName(const BundleID& bundleID) const {
    NSString* identifier = native(bundleID);
    NSString* path = [[NSWorkspace sharedWorkspace] URLForApplicationWithBundleIdentifier:identifier].path;
    return path == nil ? std::nullopt
                       : portableIfAny([[NSFileManager defaultManager] displayNameAtPath:path]);
}

Subscription MacWorkspace::observe(std::function<void(const WorkspaceNotice&)> handler) {
    using Kind = WorkspaceNotice::Kind;
    const std::array<std::pair<NSNotificationName, Kind>, 7> notifications{{
        {NSWorkspaceDidWakeNotification, Kind::didWake},
        {NSWorkspaceScreensDidWakeNotification, Kind::screensDidWake},
        {NSWorkspaceActiveSpaceDidChangeNotification, Kind::activeSpaceChanged},
        {NSWorkspaceSessionDidBecomeActiveNotification, Kind::sessionBecameActive},
        {NSWorkspaceDidLaunchApplicationNotification, Kind::launched},
        {NSWorkspaceDidTerminateApplicationNotification, Kind::terminated},
        {NSWorkspaceDidActivateApplicationNotification, Kind::activated},
    }};
    const auto shared =
        std::make_shared<const std::function<void(const WorkspaceNotice&)>>(std::move(handler));
    auto observers = std::make_shared<std::vector<Subscription>>();
    for (const auto& [name, kind] : notifications) {
        observers->push_back(observeNotification(
            [NSWorkspace sharedWorkspace].notificationCenter, name,
            [shared, kind](NSNotification* notification) { (*shared)(portable(notification, kind)); }));
    }
    observers->push_back(observeKey([NSWorkspace sharedWorkspace], @"runningApplications", [shared] {
        (*shared)({.kind = Kind::listChanged, .pid = {}, .bundleID = {}});
    }));
    return Subscription([observers] { observers->clear(); });
}

void MacWorkspace::terminate(const BundleID& bundleID) {
    NSString* identifier = native(bundleID);
    for (NSRunningApplication* application in
         [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier]) {
        [application terminate];
    }
}

bool MacWorkspace::openURL(const std::string& url) {
    NSURL* address = [NSURL URLWithString:native(url)];
    return address != nil && [[NSWorkspace sharedWorkspace] openURL:address];
}

}  // namespace velko
