#import <AppKit/AppKit.h>
#include <libproc.h>
#include <mach/mach_time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <utility>

#include "VelkoEngine/Text/Text.h"
#include "VelkoEngine/mac/Conversions.h"
#import "VelkoEngine/mac/MacPlatform.h"
#import "VelkoEngine/mac/Observers.h"

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

NSArray<NSRunningApplication*>* running(const BundleID& bundleID) {
    NSString* identifier = native(bundleID);
    return [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier];
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
    for (NSRunningApplication* application in running(bundleID)) {
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

std::vector<std::size_t> MacWorkspace::placesOf(const std::vector<std::string>& names) const {
    NSMutableArray<NSString*>* texts = [NSMutableArray arrayWithCapacity:names.size()];
    for (const std::string& name : names) {
        [texts addObject:native(name)];
    }
    std::map<std::string, std::size_t> places;
    for (NSString* text in [texts sortedArrayUsingSelector:@selector(localizedStandardCompare:)]) {
        places.try_emplace(portable(text), places.size());
    }
    std::vector<std::size_t> result;
    result.reserve(names.size());
    for (NSString* text in texts) {
        result.push_back(places[portable(text)]);
    }
    return result;
}

Subscription MacWorkspace::observe(std::function<void(const WorkspaceNotice&)> handler) {
    using Kind = WorkspaceNotice::Kind;
    const std::array<std::pair<NSNotificationName, Kind>, 9> notifications{{
        {NSWorkspaceDidWakeNotification, Kind::didWake},
        {NSWorkspaceScreensDidSleepNotification, Kind::screensDidSleep},
        {NSWorkspaceScreensDidWakeNotification, Kind::screensDidWake},
        {NSWorkspaceActiveSpaceDidChangeNotification, Kind::activeSpaceChanged},
        {NSWorkspaceSessionDidBecomeActiveNotification, Kind::sessionBecameActive},
        {NSWorkspaceSessionDidResignActiveNotification, Kind::sessionResignedActive},
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
    for (NSRunningApplication* application in running(bundleID)) {
        [application terminate];
    }
}

bool MacWorkspace::openURL(const std::string& url) {
    NSURL* address = [NSURL URLWithString:native(url)];
    return address != nil && [[NSWorkspace sharedWorkspace] openURL:address];
}

MacProcesses::MacProcesses() {
    mach_timebase_info_data_t info{};
    if (mach_timebase_info(&info) == KERN_SUCCESS) {
        timeBase_ = {.numerator = info.numer, .denominator = info.denom};
    }
}

ProcessID MacProcesses::ownPID() const {
    return getpid();
}

std::optional<std::vector<ProcessID>> MacProcesses::list() const {
    const int count = proc_listallpids(nullptr, 0);
    constexpr int sizeOfPID = sizeof(ProcessID);
    if (count <= 0 || count > std::numeric_limits<int>::max() / sizeOfPID / 2) {
        return std::nullopt;
    }
    // Twice the room, for processes that start between the two calls.
    std::vector<ProcessID> pids(static_cast<std::size_t>(count) * 2);
    const int filled = proc_listallpids(pids.data(), count * 2 * sizeOfPID);
    if (filled <= 0) {
        return std::nullopt;
    }
    pids.resize(std::min(static_cast<std::size_t>(filled), pids.size()));
    return pids;
}

std::optional<std::string> MacProcesses::name(ProcessID pid) const {
    std::array<char, 256> buffer{};
    const int length = proc_name(pid, buffer.data(), buffer.size());
    if (length <= 0) {
        return std::nullopt;
    }
    return repairedUtf8({buffer.data(), strnlen(buffer.data(), buffer.size())});
}

std::optional<ResourceUsage> MacProcesses::resourceUsage(ProcessID pid) const {
    rusage_info_v4 info{};
    if (proc_pid_rusage(pid, RUSAGE_INFO_V4, reinterpret_cast<rusage_info_t*>(&info)) != 0) {
        return std::nullopt;
    }
    return ResourceUsage{.userTime = info.ri_user_time,
                         .systemTime = info.ri_system_time,
                         .physicalFootprint = info.ri_phys_footprint};
}

NullSignal MacProcesses::nullSignal(ProcessID pid) const {
    if (kill(pid, 0) == 0) {
        return NullSignal::delivered;
    }
    return errno == EPERM ? NullSignal::notPermitted : NullSignal::noSuchProcess;
}

}  // namespace velko
