#include "Simulator/Desktop/SimulatedProcesses.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <ranges>
#include <utility>

namespace velko {

namespace {

SimulatedIcon systemItem(int number, std::string title, double width) {
    return {.title = std::move(title),
            .identifier = "com.apple.menuextra." + std::to_string(number),
            .width = width,
            .systemItem = number};
}

}  // namespace

SimulatedApp SimulatedApp::menuBarAgent() {
    return {.bundleID = "com.apple.MenuBarAgent",
            .name = SimulatedApp::menuBarHostName,
            .icons = {systemItem(SimulatedApp::clockItem, "Clock", 140), systemItem(1, "Control Center", 32),
                      systemItem(2, "Wi-Fi", 32)},
            .bundlePath = "/System/Library/CoreServices/MenuBarAgent.app"};
}

SimulatedApp SimulatedApp::systemUIServer() {
    return {.bundleID = "com.apple.systemuiserver",
            .name = "SystemUIServer",
            .icons = {systemItem(3, "VPN", 32)},
            .bundlePath = "/System/Library/CoreServices/SystemUIServer.app"};
}

SimulatedApp SimulatedApp::velkoItself() {
    return {.bundleID = "app.velko.mac", .name = "Velko", .icons = {{.title = "Velko", .width = 28}}};
}

std::optional<std::vector<ProcessID>> SimulatedProcesses::list() const {
    const std::lock_guard lock(mutex_);
    std::vector<ProcessID> pids;
    pids.reserve(running_.size() + 1);
    std::ranges::transform(running_ | std::views::reverse, std::back_inserter(pids), &SimulatedProcess::pid);
    pids.push_back(0);
    return pids;
}

std::optional<std::string> SimulatedProcesses::name(ProcessID pid) const {
    const std::lock_guard lock(mutex_);
    const auto* process = find(pid);
    if (process == nullptr) {
        return std::nullopt;
    }
    return process->app.processName.empty() ? process->app.name : process->app.processName;
}

std::optional<ResourceUsage> SimulatedProcesses::resourceUsage(ProcessID pid) const {
    const std::lock_guard lock(mutex_);
    const auto* process = find(pid);
    if (process == nullptr || process->app.isForeign) {
        return std::nullopt;
    }
    const auto nanoseconds = static_cast<std::uint64_t>(cpuTime(*process).count());
    const std::uint64_t time = nanoseconds * timeBase().denominator / timeBase().numerator;
    return ResourceUsage{
        .userTime = time - time / 4, .systemTime = time / 4, .physicalFootprint = process->memoryBytes};
}

NullSignal SimulatedProcesses::nullSignal(ProcessID pid) const {
    const std::lock_guard lock(mutex_);
    const auto* process = find(pid);
    if (process == nullptr) {
        return NullSignal::noSuchProcess;
    }
    return process->app.isForeign ? NullSignal::notPermitted : NullSignal::delivered;
}

std::vector<ProcessID> SimulatedProcesses::applications(const BundleID& bundleID) const {
    const std::lock_guard lock(mutex_);
    std::vector<ProcessID> pids;
    for (const auto& process : running_) {
        if (process.app.isApplication && !bundleID.empty() && process.app.bundleID == bundleID) {
            pids.push_back(process.pid);
        }
    }
    return pids;
}

MainThread::Uptime SimulatedProcesses::cpuTime(const SimulatedProcess& process) const {
    const auto worked = std::chrono::duration<double, std::nano>(mainThread_.now() - process.since);
    return process.cpuTime + std::chrono::round<MainThread::Uptime>(worked * process.cores);
}

void SimulatedProcesses::work(ProcessID pid, double cores) {
    const std::lock_guard lock(mutex_);
    if (auto* process = editable(pid)) {
        process->cpuTime = cpuTime(*process);
        process->since = mainThread_.now();
        process->cores = cores;
    }
}

void SimulatedProcesses::setMemory(ProcessID pid, std::uint64_t bytes) {
    const std::lock_guard lock(mutex_);
    if (auto* process = editable(pid)) {
        process->memoryBytes = bytes;
    }
}

ProcessID SimulatedProcesses::start(SimulatedApp app) {
    const std::lock_guard lock(mutex_);
    running_.push_back({.pid = nextPID_, .app = std::move(app)});
    return nextPID_++;
}

void SimulatedProcesses::end(ProcessID pid) {
    const std::lock_guard lock(mutex_);
    std::erase_if(running_, [pid](const auto& process) { return process.pid == pid; });
}

const SimulatedProcess* SimulatedProcesses::find(ProcessID pid) const {
    const auto found = std::ranges::find(running_, pid, &SimulatedProcess::pid);
    return found == running_.end() ? nullptr : &*found;
}

SimulatedProcess* SimulatedProcesses::editable(ProcessID pid) {
    const auto found = std::ranges::find(running_, pid, &SimulatedProcess::pid);
    return found == running_.end() ? nullptr : &*found;
}

std::optional<ProcessID> SimulatedProcesses::oldestNamed(const std::string& processName) const {
    const auto found =
        std::ranges::find_if(running_, [&](const auto& process) { return name(process.pid) == processName; });
    return found == running_.end() ? std::nullopt : std::optional(found->pid);
}

}  // namespace velko
