#include "Simulator/Machine/SimulatedMac.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velko {

namespace {

constexpr auto hostProcess = "MenuBarAgent";
constexpr auto placingTime = std::chrono::milliseconds(150);   ///< of a new icon
constexpr auto quittingTime = std::chrono::milliseconds(200);  ///< an app's last words
constexpr auto announcing = std::chrono::milliseconds(50);     ///< how much later than the list a notice is

SimulatedIcon systemItem(int number, std::string title, double width) {
    return {.title = std::move(title),
            .identifier = "com.apple.menuextra." + std::to_string(number),
            .width = width,
            .systemItem = number};
}

SimulatedApp menuBarAgent() {
    return {.bundleID = "com.apple.MenuBarAgent",
            .name = hostProcess,
            .icons = {systemItem(SimulatedMenuBar::clockItem, "Clock", 140),
                      systemItem(1, "Control Center", 32), systemItem(2, "Wi-Fi", 32)},
            .bundlePath = "/System/Library/CoreServices/MenuBarAgent.app"};
}

SimulatedApp systemUIServer() {
    return {.bundleID = "com.apple.systemuiserver",
            .name = "SystemUIServer",
            .icons = {systemItem(3, "VPN", 32)},
            .bundlePath = "/System/Library/CoreServices/SystemUIServer.app"};
}

SimulatedApp velkoItself() {
    return {.bundleID = "app.velko.mac", .name = "Velko", .icons = {{.title = "Velko", .width = 28}}};
}

MachineThread& threadOf(HostMainThread* host, SimulatedMainThread& inVirtualTime) {
    if (host != nullptr) {
        return *host;
    }
    return inVirtualTime;
}

std::optional<BundleID> identifierOf(const SimulatedApp& app) {
    return app.bundleID.empty() ? std::nullopt : std::optional(app.bundleID);
}

}  // namespace

SimulatedMac::SimulatedMac(SimulatedMacOptions options)
    : mainThread(options.date),
      host_(options.host),
      thread_(threadOf(host_, mainThread)),
      accessibility(thread_, options.trusted),
      processes(thread_),
      workspace(thread_, processes),
      displays(thread_, std::move(options.displays)),
      pointer(thread_, accessibility),
      framework(thread_, [this] { refresh(); }),
      dialogs(thread_),
      trees_(accessibility) {
    launch(menuBarAgent());
    launch(systemUIServer());
    processes.setOwn(launch(velkoItself()));
    accessibility.setOwn(processes.ownPID());
    workspace.onTerminate = [this](ProcessID pid) {
        thread_.happen(quittingTime, [this, pid] { quit(pid); });
    };
    mainThread.isNapping = [this] { return isNapping(); };
    activity.onBegin = [this] { mainThread.wakeFromNap(); };
    windows.others = {{.layer = 24, .ownerPID = menuBarHost(), .frame = Rect{.width = 1920, .height = 24}},
                      {.layer = 0, .ownerPID = std::nullopt}};
}

SimulatedMac::~SimulatedMac() {
    if (host_ != nullptr) {
        host_->waitForReads();
    }
}

void SimulatedMac::advance(MainThread::Uptime duration) {
    if (host_ != nullptr) {
        host_->runFor(duration);
    } else {
        mainThread.advance(duration);
    }
}

FileCalls SimulatedMac::fileCalls() const {
    FileCalls calls;
    calls.write = [write = calls.write, counter = bytesWritten_](int file, const void* data,
                                                                 std::size_t size) {
        const auto written = write(file, data, size);
        *counter += static_cast<std::uint64_t>(std::max<std::ptrdiff_t>(written, 0));
        return written;
    };
    calls.fsync = [](int) { return 0; };  // nobody pulls the plug of a Mac in memory
    // Locks are the machine's own: whoever else has the folder on the host does not work on this Mac.
    calls.flock = [](int, int) { return 0; };
    calls.ftruncate = [](int, long long) { return 0; };
    return calls;
}

Platform SimulatedMac::platform() noexcept {
    return {.mainThread = thread_,
            .accessibility = accessibility,
            .workspace = workspace,
            .displays = displays,
            .pointer = pointer,
            .processes = processes,
            .windows = windows,
            .privateFramework = framework,
            .activity = activity};
}

AppPorts SimulatedMac::appPorts() noexcept {
    return {.application = application,
            .defaults = defaults,
            .dialogs = dialogs,
            .loginItem = loginItem,
            .pasteboard = pasteboard,
            .statusItem = statusItem,
            .surfaces = surfaces,
            .updater = updater};
}

SimulatedMac::Cost SimulatedMac::cost() const {
    return {.wakeUps = mainThread.wakeUps(),
            .accessibilityMessages = accessibility.messages(),
            .engineCalls = framework.activations() + framework.invalidations(),
            .bytesWritten = *bytesWritten_};
}

SimulatedMac::Registered SimulatedMac::registered() const {
    return {.elementObservers = accessibility.observers(),
            .noticeObservers = workspace.observers() + displays.observers(),
            .taps = pointer.taps(),
            .work = mainThread.waiting()};
}

ProcessID SimulatedMac::launch(SimulatedApp app) {
    const ProcessID pid = processes.start(std::move(app));
    const SimulatedProcess& process = *processes.find(pid);
    workspace.install(process.app);
    accessibility.addApplication(pid, process.app.name);
    for (const auto& icon : process.app.icons) {
        put(process, icon, std::nullopt);
    }
    refresh();
    announce(WorkspaceNotice::Kind::launched, process.app, pid, identifierOf(process.app));
    return pid;
}

void SimulatedMac::quit(ProcessID pid) {
    if (const auto* process = processes.find(pid)) {
        end(pid, identifierOf(process->app));
    }
}

void SimulatedMac::crash(ProcessID pid) {
    end(pid, std::nullopt);
}

void SimulatedMac::end(ProcessID pid, std::optional<BundleID> bundleID) {
    const auto* process = processes.find(pid);
    if (process == nullptr) {
        return;
    }
    const SimulatedApp app = process->app;
    processes.end(pid);
    accessibility.removeApplication(pid);
    menuBar_.removeAll(pid);
    if (windows.menuOwner() == pid) {
        windows.closeMenu();
    }
    refresh();
    const auto told = bundleID ? std::optional(pid) : std::nullopt;
    announce(WorkspaceNotice::Kind::terminated, app, told, std::move(bundleID));
}

void SimulatedMac::announce(WorkspaceNotice::Kind kind, const SimulatedApp& app, std::optional<ProcessID> pid,
                            std::optional<BundleID> bundleID) {
    if (!app.isApplication) {
        return;
    }
    tell(WorkspaceNotice::Kind::listChanged);
    if (app.isRegular) {
        thread_.happen(announcing,
                       [this, kind, pid, bundleID = std::move(bundleID)] { tell(kind, pid, bundleID); });
    }
}

void SimulatedMac::tell(WorkspaceNotice::Kind kind, std::optional<ProcessID> pid,
                        std::optional<BundleID> bundleID) {
    workspace.tell({.kind = kind, .pid = pid, .bundleID = std::move(bundleID)});
}

ProcessID SimulatedMac::menuBarHost() const {
    const auto& running = processes.running();
    const auto host = std::ranges::find_if(
        running, [&](const auto& process) { return processes.name(process.pid) == hostProcess; });
    return host == running.end() ? 0 : host->pid;
}

void SimulatedMac::put(const SimulatedProcess& owner, SimulatedIcon icon, std::optional<std::size_t> place) {
    const auto element = menuBar_.add(owner, std::move(icon), place);
    element->actions["AXPress"] = [this, pid = owner.pid] { openMenu(pid); };
}

void SimulatedMac::changeIcon(ProcessID pid, std::size_t index,
                              const std::function<void(SimulatedIcon&)>& change) {
    auto* slot = menuBar_.find(pid, index);
    if (slot == nullptr) {
        return;
    }
    const SimulatedIcon before = slot->icon;
    change(slot->icon);
    const SimulatedIcon after = slot->icon;
    const auto element = slot->element;
    refresh();
    const std::array<std::pair<const char*, bool>, 3> changes{{
        {"AXTitleChanged", after.title != before.title},
        {"AXValueChanged", after.value != before.value},
        {"AXResized", after.width != before.width},
    }};
    for (const auto& [notification, isMade] : changes) {
        if (isMade) {
            accessibility.notify(element, notification);
        }
    }
}

void SimulatedMac::addIcon(ProcessID pid, SimulatedIcon icon, std::optional<std::size_t> place) {
    if (const auto* process = processes.find(pid)) {
        put(*process, std::move(icon), place);
        if (pid == processes.ownPID()) {
            settleBroom(BroomSpot::nowhere, placingTime);
            lookedAt();
        }
        refresh();
    }
}

void SimulatedMac::removeIcon(ProcessID pid, std::size_t index) {
    if (const auto* slot = menuBar_.find(pid, index)) {
        accessibility.notify(slot->element, "AXUIElementDestroyed");
        menuBar_.remove(pid, index);
        refresh();
    }
}

SimulatedElement* SimulatedMac::iconElement(ProcessID pid, std::size_t index) {
    const auto* slot = menuBar_.find(pid, index);
    return slot == nullptr ? nullptr : slot->element.get();
}

}  // namespace velko
