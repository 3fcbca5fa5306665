#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Scenarios/World.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Velko/Ports/Dialogs.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Menu.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::web {

/// The window of the system's settings on the simulated Mac. It shows the only part to which Velko sends its
/// user: the list of the apps that may control the Mac.
class SystemSettings final {
 public:
    /// Opens the window if Velko has opened an address of the settings since the last call.
    void look(SimulatedMac& mac);
    void close(SimulatedMac& mac);
    [[nodiscard]] bool isOpen() const noexcept { return pid_.has_value(); }

 private:
    void open(SimulatedMac& mac);

    std::size_t addressesSeen_ = 0;
    std::optional<ProcessID> pid_;
};

/// The result of something that the page asked for. On failure, one line that says why it did not happen.
using Done = std::expected<void, std::string>;

/// A simulated Mac with Velko on it, and what a page needs to show and use it: how fast time passes, which
/// menu is open, which alerts the user has read. One thread at a time.
class Session final : private NonCopyable {
 public:
    /// An open menu, and the element of the page from which it hangs.
    struct OpenMenu {
        std::string anchor;
        view::Menu items;
        std::optional<Surfaces::Kind> surface{};  ///< the surface of its control, if it belongs to one
    };

    /// Starts Velko, with what the folder keeps from earlier runs, then the sample apps.
    explicit Session(const std::filesystem::path& home);

    [[nodiscard]] scenarios::World& world() noexcept { return world_; }
    [[nodiscard]] SimulatedMac& mac() noexcept { return world_.mac(); }

    // Time

    /// Lets as much virtual time pass as `real` is at the chosen speed, and as much of a jump as fits into
    /// `budget` of real time.
    void pass(std::chrono::nanoseconds real, std::chrono::nanoseconds budget);
    void setSpeed(double speed) noexcept { speed_ = speed; }
    [[nodiscard]] double speed() const noexcept { return speed_; }
    /// Lets virtual time pass as fast as possible. Refused beyond the last year that the simulated clock
    /// knows.
    Done jump(MainThread::Uptime duration);
    void stopJump() noexcept { jump_ = MainThread::Uptime(0); }
    [[nodiscard]] MainThread::Uptime jumpLeft() const noexcept { return jump_; }
    /// Runs the work that is due now. Must be called after each thing that the page has done.
    void settle();
    /// Grows whenever what the page shows may have changed.
    [[nodiscard]] std::uint64_t revision();

    // What only a page needs

    /// The open menu: of a control, of the broom or of an app. One or none.
    [[nodiscard]] std::vector<OpenMenu> menus();
    void openControlMenu(OpenMenu menu);
    /// Chooses an item of the open menu. An empty place closes the menu.
    Done choose(const std::vector<std::size_t>& place);
    void closeMenus();
    /// Closes the menu of a control, if one is open.
    void closeControlMenu();
    void readAlert() noexcept { ++alertsRead_; }
    /// The alert on screen; null if the user has read all.
    [[nodiscard]] const Dialogs::Alert* alert();
    [[nodiscard]] SystemSettings& systemSettings() noexcept { return systemSettings_; }
    /// Quits Velko, deletes its layout and starts it again.
    Done startOver();

 private:
    void noteChange() noexcept { ++changes_; }
    void forgetVelko();

    scenarios::World world_;
    double speed_ = 1;
    MainThread::Uptime owed_{0};
    MainThread::Uptime jump_{0};
    bool isQuitting_ = false;
    std::vector<OpenMenu> controlMenu_;  ///< one or none
    std::size_t alertsRead_ = 0;
    SystemSettings systemSettings_;
    std::uint64_t changes_ = 0;
};

}  // namespace velko::web
