#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedTrees.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedDisplays.h"
#include "Simulator/Desktop/SimulatedLoginItem.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWindows.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Machine/SimulatedApp.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/HostMainThread.h"
#include "Simulator/Time/SimulatedActivity.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Ports/AppPorts.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

struct SimulatedMacOptions {
    bool trusted = true;  ///< whether the user has given Velko the Accessibility permission
    PreciseDate date = std::chrono::sys_days(std::chrono::year{2026} / 3 / 2) + std::chrono::hours(8);
    std::vector<Display> displays = {SimulatedDisplays::plain()};
    /// What the machine runs on, and outlives it; left out, it runs in virtual time. On a host it is never
    /// put to sleep, and neither wake-ups nor waiting work are counted.
    HostMainThread* host = nullptr;
};

/// A Mac in memory, with Velko as one of its processes.
///
/// It starts with the menu bar's host and its system items, and with Velko's broom beside them. Whatever
/// happens to it is done by its operations and seen by Velko through the ports. Nothing happens by itself
/// but in `advance`.
class SimulatedMac final : private NonCopyable {
 public:
    /// What Velko has cost the machine since it started.
    struct Cost {
        std::uint64_t wakeUps = 0;
        std::uint64_t accessibilityMessages = 0;
        std::uint64_t engineCalls = 0;   ///< activations and invalidations
        std::uint64_t bytesWritten = 0;  ///< by way of `fileCalls`

        bool operator==(const Cost&) const = default;
    };

    /// What Velko has registered with the machine and not let go.
    struct Registered {
        std::size_t elementObservers = 0;
        std::size_t noticeObservers = 0;  ///< of the workspace and of the displays
        std::size_t taps = 0;
        std::size_t work = 0;  ///< timers, background reads, and what was posted

        bool operator==(const Registered&) const = default;
    };

    explicit SimulatedMac(SimulatedMacOptions options = {});
    /// Waits for the reads that a host makes on other threads: they ask this machine.
    ~SimulatedMac();

    [[nodiscard]] Platform platform() noexcept;
    [[nodiscard]] AppPorts appPorts() noexcept;
    /// The file system's calls, with what is written counted. They may outlive the machine.
    [[nodiscard]] FileCalls fileCalls() const;
    /// Lets time pass: at once in virtual time, in earnest on a host.
    void advance(MainThread::Uptime duration);
    [[nodiscard]] Cost cost() const;
    [[nodiscard]] Registered registered() const;

    // Programs. The workspace's observers hear that the list of applications has changed, and a moment
    // later of a regular app by name.
    ProcessID launch(SimulatedApp app);
    void quit(ProcessID pid);
    /// The process is gone, and with it what the notice could say of it.
    void crash(ProcessID pid);
    /// While it hangs, a process answers no Accessibility message.
    void hang(ProcessID pid, bool hung) { accessibility.setHung(pid, hung); }
    /// The process that presents the menu bar: the oldest one named "MenuBarAgent"; 0 without one.
    [[nodiscard]] ProcessID menuBarHost() const;

    // Icons, counted as their app added them, from 0.
    void changeIcon(ProcessID pid, std::size_t index, const std::function<void(SimulatedIcon&)>& change);
    /// `place`: where it goes among all icons, from the right; left out, left of them all.
    void addIcon(ProcessID pid, SimulatedIcon icon, std::optional<std::size_t> place = std::nullopt);
    void removeIcon(ProcessID pid, std::size_t index);
    /// The icon's element in its app's tree, to break it; null when there is no such icon.
    [[nodiscard]] SimulatedElement* iconElement(ProcessID pid, std::size_t index);

    // The user and the session.
    /// `isTold`: the system notices; else it goes on saying what it said before.
    void grantTrust(bool isTold = true) { accessibility.setTrusted(true, isTold); }
    void revokeTrust(bool isTold = true);
    /// Whose element lies at a point of the menu bar that an app's icon takes: the bar's host's, or the
    /// app's.
    void setHitsEndAtHost(bool host);
    /// For so long no app answers anything.
    void stall(std::chrono::milliseconds duration);
    void sleepAndWake(std::chrono::milliseconds duration);
    void changeSpace();
    void returnToSession();
    void setDisplays(std::vector<Display> arrangement);
    /// An app's menu opens in place of any other; its observers hear of both.
    void openMenu(ProcessID pid);
    void closeMenu();
    /// Another app comes to the front, and its own menus stand at the left end of the bar.
    void activate(ProcessID pid);
    /// Where those menus are, origin at the top left of the primary screen; nothing before an app has come
    /// to the front, and while it is gone.
    [[nodiscard]] std::optional<Rect> frontMenus() const;
    /// A click, left or right: on an app's icon it opens its menu, and wherever it is, it closes the menu
    /// that was open. Origin at the top left of the primary screen.
    void click(Point location);
    /// Clicks on the middle of an icon; whether there is one to click on.
    bool clickIcon(ProcessID pid, std::size_t index = 0);
    /// A whole click on the broom. Who listens for presses elsewhere hears of this one first; the broom's
    /// action runs a moment after the button is up again, by way of the menu bar's host. Whether it can be
    /// clicked on.
    bool clickBroom(const SimulatedClick& click = {});
    static constexpr std::chrono::milliseconds clickTime{90};  ///< from the press to the action
    /// Where the system puts the broom, or says that it is.
    enum class BroomSpot {
        bar,      ///< where its icon shows
        notch,    ///< under the camera housing of the first display that has one
        nowhere,  ///< it has not been placed, or is not allowed
        stub,     ///< it shows, and the system gives a frame of no size
    };
    void putBroom(BroomSpot spot);
    [[nodiscard]] BroomSpot broomSpot() const noexcept { return settling_.value_or(broomSpot_); }
    /// The system begins to stretch Velko's timers, which it otherwise does after minutes in which nobody has
    /// looked at it; until somebody does.
    void nap();

    // What a person sees.
    /// The owners of the apps' icons that show, left to right, the broom among them; once per icon.
    [[nodiscard]] std::vector<BundleID> visibleIcons() const;
    /// The titles of the system's own items that show, left to right.
    [[nodiscard]] std::vector<std::string> visibleSystemItems() const;
    /// The menu bar as text, in rows of at most 108 columns; a last line tells of an open menu.
    [[nodiscard]] std::string menuBarPicture() const;
    /// Every icon, hidden ones too, and where it stands.
    [[nodiscard]] const SimulatedMenuBar& menuBar() const noexcept { return menuBar_; }
    /// Called after every change of what shows, also amid an `advance`.
    std::function<void()> onMenuBarChange;

    SimulatedMainThread mainThread;  ///< idle when the machine runs on a host

 private:
    HostMainThread* host_;
    MachineThread& thread_;

 public:
    SimulatedAccessibility accessibility;
    SimulatedProcesses processes;
    SimulatedWorkspace workspace;
    SimulatedDisplays displays;
    SimulatedPointer pointer;
    SimulatedWindows windows;
    SimulatedFramework framework;
    SimulatedActivity activity;
    SimulatedDialogs dialogs;
    SimulatedLoginItem loginItem;
    SimulatedApplication application;
    SimulatedDefaults defaults;
    SimulatedPasteboard pasteboard;
    SimulatedStatusItem statusItem{thread_};
    SimulatedSurfaces surfaces{thread_};
    SimulatedUpdater updater;

 private:
    void end(ProcessID pid, std::optional<BundleID> bundleID);
    void tell(WorkspaceNotice::Kind kind, std::optional<ProcessID> pid = std::nullopt,
              std::optional<BundleID> bundleID = std::nullopt);
    void announce(WorkspaceNotice::Kind kind, const SimulatedApp& app, std::optional<ProcessID> pid,
                  std::optional<BundleID> bundleID);
    /// Everybody has much to do for a moment, and answers late.
    void keepAppsBusy(MainThread::Uptime delay, MainThread::Uptime duration);
    void put(const SimulatedProcess& owner, SimulatedIcon icon, std::optional<std::size_t> place);
    void refresh();
    [[nodiscard]] bool isBroomInSight() const;
    void tellWhereBroomIs();
    void settleBroom(BroomSpot meanwhile, std::chrono::milliseconds duration);
    [[nodiscard]] bool isNapping() const;
    void lookedAt();

    /// What a person sees of one icon.
    struct Sight {
        ProcessID pid = 0;
        std::optional<std::string> title;
        Rect frame;

        bool operator==(const Sight&) const = default;
    };

    std::shared_ptr<std::uint64_t> bytesWritten_ = std::make_shared<std::uint64_t>(0);
    SimulatedMenuBar menuBar_;
    SimulatedTrees trees_;
    ProcessID front_ = 0;
    bool hitsEndAtHost_ = true;
    MainThread::Uptime busyUntil_{0};
    MainThread::Uptime busyBy_{0};  ///< how late apps answer until then
    double barWidth_ = 0;           ///< of the last primary screen that there was
    std::vector<Sight> sight_;
    BroomSpot broomSpot_ = BroomSpot::bar;
    std::optional<BroomSpot> settling_;  ///< what the system says until the broom has its place
    MainThread::Uptime settledAt_{};
    MainThread::Uptime lookedAtAt_{};
    bool mustNap_ = false;
};

}  // namespace velko
