#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/MenuBar/SimulatedBroom.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

struct AppPorts;
struct FileCalls;
struct Platform;
struct SimulatedElement;
struct WorkspaceNotice;
class HostMainThread;
class SimulatedAccessibility;
class SimulatedActivity;
class SimulatedApplication;
class SimulatedCommandDoor;
class SimulatedDefaults;
class SimulatedDialogs;
class SimulatedDisplays;
class SimulatedFramework;
class SimulatedHotKeys;
class SimulatedLoginItem;
class SimulatedMainThread;
class SimulatedMenuBar;
class SimulatedPasteboard;
class SimulatedPointer;
class SimulatedProcesses;
class SimulatedSession;
class SimulatedStatusItem;
class SimulatedSurfaces;
class SimulatedUpdater;
class SimulatedWindows;
class SimulatedWorkspace;
class SimulatedZone;

struct SimulatedMacOptions {
    bool trusted = true;  ///< whether the user has given Velko the Accessibility permission
    PreciseDate date = std::chrono::sys_days(std::chrono::year{2026} / 3 / 2) + std::chrono::hours(8);
    std::vector<Display> displays = {};  ///< left out: a desk screen
    /// What the machine runs on; it outlives the machine. Without it, the machine runs in virtual time. On a
    /// host the machine never sleeps, and it counts neither wake-ups nor waiting work.
    HostMainThread* host = nullptr;
};

/// A Mac in memory, with Velko as one of its processes.
///
/// At first the menu bar shows the system's own items and Velko's broom. Tests and scenarios call the
/// operations below, and Velko sees the results through the ports. Time passes, and things happen by
/// themselves, only in `advance`. This header only names the machine's parts: include the headers of those
/// that you use.
class SimulatedMac final : private NonCopyable {
    struct Parts;
    std::unique_ptr<Parts> parts_;

 public:
    /// What Velko has cost the machine since it started.
    struct Cost {
        std::uint64_t wakeUps = 0;
        std::uint64_t bursts = 0;  ///< wake-ups that no other came just before
        std::uint64_t accessibilityMessages = 0;
        std::uint64_t engineCalls = 0;   ///< activations and invalidations
        std::uint64_t bytesWritten = 0;  ///< by way of `fileCalls`

        bool operator==(const Cost&) const = default;
    };

    /// What Velko has registered with the machine and not removed.
    struct Registered {
        std::size_t elementObservers = 0;
        std::size_t noticeObservers = 0;  ///< of the workspace and of the displays
        std::size_t taps = 0;
        std::size_t keys = 0;
        std::size_t work = 0;  ///< timers, background reads, and what was posted

        bool operator==(const Registered&) const = default;
    };

    explicit SimulatedMac(SimulatedMacOptions options = {});
    /// Waits for the reads that a host makes on other threads, because they use this machine.
    ~SimulatedMac();

    SimulatedZone& zone;
    SimulatedMainThread& mainThread;  ///< idle when the machine runs on a host
    SimulatedAccessibility& accessibility;
    SimulatedProcesses& processes;
    SimulatedWorkspace& workspace;
    SimulatedDisplays& displays;
    SimulatedPointer& pointer;
    SimulatedWindows& windows;
    SimulatedFramework& framework;
    SimulatedActivity& activity;
    SimulatedCommandDoor& commands;
    SimulatedDialogs& dialogs;
    SimulatedHotKeys& hotKeys;
    SimulatedLoginItem& loginItem;
    SimulatedApplication& application;
    SimulatedDefaults& defaults;
    SimulatedPasteboard& pasteboard;
    SimulatedStatusItem& statusItem;
    SimulatedSurfaces& surfaces;
    SimulatedUpdater& updater;
    SimulatedSession& session;

    [[nodiscard]] Platform platform() noexcept;
    [[nodiscard]] AppPorts appPorts() noexcept;
    /// The file system's calls, which count the bytes that are written. They may outlive the machine.
    [[nodiscard]] FileCalls fileCalls() const;
    /// Lets time pass. In virtual time the call returns at once; on a host it takes that long.
    void advance(MainThread::Uptime duration);
    [[nodiscard]] Cost cost() const;
    [[nodiscard]] Registered registered() const;

    // Programs. Observers of the workspace hear that the list of applications has changed. If the app is a
    // regular one, a moment later they also hear its name.
    ProcessID launch(SimulatedApp app);
    void quit(ProcessID pid);
    /// Ends a process in such a way that the notice cannot say which one it was.
    void crash(ProcessID pid);
    /// While it hangs, a process answers no Accessibility message.
    void hang(ProcessID pid, bool hung);
    /// The process that presents the menu bar: the oldest one named "MenuBarAgent"; 0 without one.
    [[nodiscard]] ProcessID menuBarHost() const;

    // Icons, counted as their app added them, from 0.
    void changeIcon(ProcessID pid, std::size_t index, const std::function<void(SimulatedIcon&)>& change);
    /// `place`: where it goes among all icons, from the right; left out, left of them all.
    void addIcon(ProcessID pid, SimulatedIcon icon, std::optional<std::size_t> place = std::nullopt);
    void removeIcon(ProcessID pid, std::size_t index);
    /// The icon's element in its app's tree. Tests change it to make it misbehave. Null when there is no such
    /// icon.
    [[nodiscard]] SimulatedElement* iconElement(ProcessID pid, std::size_t index);

    // The user.
    /// With `isTold` the system says so from now on. Otherwise it still says what it said before.
    void grantTrust(bool isTold = true);
    void revokeTrust(bool isTold = true);
    /// Chooses what a hit test finds where an app's icon is: an element of the menu bar's host, or the app's
    /// own element.
    void setHitsEndAtHost(bool host);
    void setDisplays(std::vector<Display> arrangement);
    /// An app's menu opens in place of any other; its observers hear of both.
    void openMenu(ProcessID pid);
    void closeMenu();
    /// Another app comes to the front. Its own menus, of that width, are at the left end of the bar.
    void activate(ProcessID pid, double menus = 300);
    /// A click with either button. It closes the open menu, wherever the click is. On an app's icon it opens
    /// that app's menu. Origin at the top left of the primary screen.
    void click(Point location);
    /// Clicks on the middle of an icon. Returns whether that icon shows.
    bool clickIcon(ProcessID pid, std::size_t index = 0);
    /// A whole click on the broom. Those who listen for presses elsewhere hear this press first. The broom's
    /// action runs a moment after the button is up again, through the menu bar's host. Returns whether a
    /// person can click on the broom.
    bool clickBroom(const SimulatedClick& click = {});
    void putBroom(BroomSpot spot);
    [[nodiscard]] BroomSpot broomSpot() const noexcept;

    // What a person sees.
    /// The owners of the apps' icons that show, left to right, the broom among them; once per icon.
    [[nodiscard]] std::vector<BundleID> visibleIcons() const;
    /// The titles of the system's own items that show, left to right.
    [[nodiscard]] std::vector<std::string> visibleSystemItems() const;
    /// The menu bar as text, in rows of at most 108 columns; a last line tells of an open menu.
    [[nodiscard]] std::string menuBarPicture() const;
    /// Every icon, hidden ones too, and where it stands.
    [[nodiscard]] const SimulatedMenuBar& menuBar() const noexcept;
    /// Called after every change of what shows, also during `advance`.
    std::function<void()> onMenuBarChange;

 private:
    void end(ProcessID pid, const WorkspaceNotice& notice);
};

}  // namespace velko
