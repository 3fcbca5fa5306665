#pragma once

#include <functional>
#include <string>
#include <vector>

#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"

/// What every implementation of a port must do, as far as trying it is harmless on a Mac in use: nothing
/// is launched, shown, moved or changed. Main thread. Each function adds one check per promise.
namespace velko::Contracts {

/// One promise, whether it was kept, and what was seen.
struct Check {
    std::string name;
    bool passed = false;
    std::string seen;
};
using Checks = std::vector<Check>;

/// Adds a check.
void expect(Checks& checks, std::string name, bool passed, std::string seen = {});

/// Lets uptime pass while the main thread does its work: in the simulator by advancing it, on a Mac by
/// running its loop.
using Pass = std::function<void(MainThread::Uptime)>;

/// Takes about one and a half seconds of uptime.
void checkMainThread(MainThread& mainThread, const Pass& pass, Checks& checks);
/// Asks this process, one other running application, and a process that does not exist; acts on none.
void checkAccessibility(const Platform& platform, Checks& checks);
void checkWorkspace(const Platform& platform, Checks& checks);
/// With the permission, listens for clicks for a moment, without looking at them.
void checkPointer(const Platform& platform, Checks& checks);
void checkDisplays(Displays& displays, Checks& checks);
void checkProcesses(const Processes& processes, Checks& checks);
void checkWindows(const Windows& windows, Checks& checks);
/// `libraryPath` and `className` name what the framework should have; either may be absent on this system.
void checkPrivateFramework(PrivateFramework& framework, const std::string& libraryPath,
                           const std::string& className, Checks& checks);

}  // namespace velko::Contracts
